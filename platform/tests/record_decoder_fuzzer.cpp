#include <corvalta/platform/record.h>

#include <algorithm>
#include <cstdlib>

using corvalta::platform::RecordClass;

// The first byte picks the class; the rest is read as its record. Whatever decodes must
// encode back to the very same bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  constexpr int classCount = static_cast<int>(RecordClass::PaneHTTPSocket) + 1;
  const auto recordClass = static_cast<RecordClass>(data[0] % classCount);
  const std::span<const std::uint8_t> record(data + 1, size - 1);
  const auto decoded = corvalta::platform::decodeRecord(recordClass, record);
  if (decoded.properties) {
    const auto again = corvalta::platform::encodeRecord(recordClass, *decoded.properties);
    if (!std::equal(again.begin(), again.end(), record.begin(), record.end())) {
      std::abort();
    }
  } else if (decoded.error.empty()) {
    std::abort();
  }
  return 0;
}
