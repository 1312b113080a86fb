#include <corvalta/platform/window_plan.h>

#include <stdexcept>

namespace corvalta::platform {
namespace {

PropertyList decodeOrThrow(RecordClass recordClass, const RecordBytes& record,
                           const std::string& what) {
  DecodedRecord decoded = decodeRecord(recordClass, record);
  if (!decoded.properties) throw std::invalid_argument(what + ": " + decoded.error);
  return std::move(*decoded.properties);
}

}  // namespace

WindowPlan planOf(const WindowDescription& description) {
  WindowPlan plan{description.className,
                  decodeOrThrow(RecordClass::Window, description.record, description.className),
                  {}};
  for (const auto& control : description.controls) {
    plan.controls.push_back(
        {control.name, std::string(recordClassName(control.recordClass)),
         decodeOrThrow(control.recordClass, control.record, description.className + "." + control.name),
         control.events});
  }
  return plan;
}

}  // namespace corvalta::platform
