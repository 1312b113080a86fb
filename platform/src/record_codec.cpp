#include <corvalta/platform/record.h>

#include <limits>
#include <stdexcept>
#include <type_traits>

namespace corvalta::platform {
namespace {

void putUnsigned(RecordBytes& out, std::uint32_t value, int width) {
  for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) {
    out.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

bool holds(const PropertyValue& value, PropertyType type) {
  switch (type) {
    case PropertyType::Text: return std::holds_alternative<std::string>(value);
    case PropertyType::Integer: return std::holds_alternative<std::int32_t>(value);
    case PropertyType::Boolean: return std::holds_alternative<bool>(value);
    case PropertyType::Color: return std::holds_alternative<Color>(value);
    case PropertyType::Object: return false;
  }
  return false;
}

void putValue(RecordBytes& out, const PropertyValue& value) {
  std::visit(
      [&out](const auto& held) {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, bool>) {
          out.push_back(held ? 1 : 0);
        } else if constexpr (std::is_same_v<T, std::int32_t>) {
          putUnsigned(out, static_cast<std::uint32_t>(held), 4);
        } else if constexpr (std::is_same_v<T, Color>) {
          out.insert(out.end(), {held.red, held.green, held.blue});
        } else {
          if (held.size() > std::numeric_limits<std::uint32_t>::max()) {
            throw std::invalid_argument("text too long for a record");
          }
          putUnsigned(out, static_cast<std::uint32_t>(held.size()), 4);
          out.insert(out.end(), held.begin(), held.end());
        }
      },
      value);
}

// Reads big-endian fields off the front of a record; every read checks what is left first.
class Reader {
 public:
  explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  [[nodiscard]] bool atEnd() const { return offset_ == bytes_.size(); }
  [[nodiscard]] std::size_t offset() const { return offset_; }

  std::optional<std::uint32_t> unsignedOf(std::size_t width) {
    if (bytes_.size() - offset_ < width) {
      return std::nullopt;
    }
    std::uint32_t value = 0;
    for (std::size_t k = 0; k < width; ++k) {
      value = (value << 8) | bytes_[offset_++];
    }
    return value;
  }

  std::optional<std::string> text(std::size_t length) {
    if (bytes_.size() - offset_ < length) {
      return std::nullopt;
    }
    const auto* first = bytes_.data() + offset_;
    offset_ += length;
    return std::string(first, first + length);
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t offset_ = 0;
};

std::optional<PropertyValue> readValue(Reader& reader, PropertyType type) {
  switch (type) {
    case PropertyType::Boolean: {
      auto byte = reader.unsignedOf(1);
      if (!byte || *byte > 1) return std::nullopt;
      return PropertyValue{*byte == 1};
    }
    case PropertyType::Integer: {
      auto word = reader.unsignedOf(4);
      if (!word) return std::nullopt;
      return PropertyValue{static_cast<std::int32_t>(*word)};
    }
    case PropertyType::Color: {
      auto rgb = reader.unsignedOf(3);
      if (!rgb) return std::nullopt;
      return PropertyValue{Color{static_cast<std::uint8_t>(*rgb >> 16),
                                 static_cast<std::uint8_t>(*rgb >> 8),
                                 static_cast<std::uint8_t>(*rgb)}};
    }
    case PropertyType::Text: {
      auto length = reader.unsignedOf(4);
      if (!length) return std::nullopt;
      auto text = reader.text(*length);
      if (!text) return std::nullopt;
      return PropertyValue{std::move(*text)};
    }
    case PropertyType::Object: break;
  }
  return std::nullopt;
}

DecodedRecord failure(const std::string& why, std::size_t offset) {
  return DecodedRecord{std::nullopt, why + " at byte " + std::to_string(offset)};
}

}  // namespace

RecordBytes encodeRecord(RecordClass recordClass, const PropertyList& properties) {
  const auto tags = propertyTags(recordClass);
  RecordBytes out;
  for (const auto& property : properties) {
    const auto tag = tagOf(recordClass, property.name);
    if (!tag) {
      throw std::invalid_argument(std::string(recordClassName(recordClass)) + " has no property " +
                                  property.name);
    }
    if (!holds(property.value, tags[*tag].type)) {
      throw std::invalid_argument("wrong type of value for " + property.name);
    }
    putUnsigned(out, *tag, 2);
    putValue(out, property.value);
  }
  return out;
}

DecodedRecord decodeRecord(RecordClass recordClass, std::span<const std::uint8_t> bytes) {
  const auto tags = propertyTags(recordClass);
  Reader reader(bytes);
  PropertyList properties;
  while (!reader.atEnd()) {
    const auto entryStart = reader.offset();
    const auto tag = reader.unsignedOf(2);
    if (!tag) {
      return failure("record cut short inside a tag", entryStart);
    }
    if (*tag >= tags.size()) {
      return failure("unknown tag " + std::to_string(*tag) + " for " +
                         std::string(recordClassName(recordClass)),
                     entryStart);
    }
    const auto& property = tags[*tag];
    if (property.type == PropertyType::Object) {
      return failure("object property " + std::string(property.name) + " cannot be set by a record",
                     entryStart);
    }
    auto value = readValue(reader, property.type);
    if (!value) {
      return failure("record cut short or malformed in the value of " + std::string(property.name),
                     entryStart);
    }
    properties.push_back(Property{std::string(property.name), std::move(*value)});
  }
  return DecodedRecord{std::move(properties), {}};
}

}  // namespace corvalta::platform
