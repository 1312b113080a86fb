#include <corvalta/net/internet_headers.h>

#include "header_keys.h"

#include <algorithm>
#include <limits>

namespace corvalta::net {

using detail::baseName;
using detail::foldCase;
using detail::keyOf;

std::int32_t InternetHeaders::Count() const {
  return static_cast<std::int32_t>(entries_.size() - holes_);
}

std::string InternetHeaders::Name(std::int32_t index) const {
  if (index < 0 || index >= Count()) {
    return {};
  }
  compact();
  return std::string(baseName(entries_[static_cast<std::size_t>(index)].key));
}

std::string InternetHeaders::Value(std::int32_t index) const {
  if (index < 0 || index >= Count()) {
    return {};
  }
  compact();
  return entries_[static_cast<std::size_t>(index)].value;
}

std::int32_t InternetHeaders::NameCount(std::string_view name) const {
  if (!has(name)) {
    return 0;
  }
  std::int32_t count = 1;
  while (count < std::numeric_limits<std::int32_t>::max() && has(keyOf(name, count))) {
    ++count;
  }
  return count;
}

std::string InternetHeaders::Value(std::string_view name) const { return Value(name, 0); }

std::string InternetHeaders::Value(std::string_view name, std::int32_t index) const {
  const Entry* entry = find(index <= 0 ? std::string(name) : keyOf(name, index));
  return entry == nullptr ? std::string() : entry->value;
}

void InternetHeaders::AppendHeader(std::string_view name, std::string value) {
  if (!has(name)) {
    store(name, std::move(value));
    return;
  }
  const std::string_view base = baseName(name);
  std::int32_t& firstFree = firstFreeNumber_[foldCase(base)];
  std::int32_t number = std::max(firstFree, 1);
  while (has(keyOf(base, number))) {
    ++number;
  }
  store(keyOf(base, number), std::move(value));
  firstFree = number + 1;
}

void InternetHeaders::SetHeader(std::string_view name, std::string value) {
  if (NameCount(name) > 1) {
    Delete(name);
  }
  store(name, std::move(value));
}

void InternetHeaders::SetHeader(std::string_view name, std::string value, std::int32_t index) {
  const std::string key = keyOf(name, index);
  if (has(key)) {
    store(key, std::move(value));
  } else {
    AppendHeader(key, std::move(value));
  }
}

void InternetHeaders::Delete(std::string_view name) {
  const std::int32_t count = NameCount(name);
  for (std::int32_t number = 0; number < count; ++number) {
    remove(keyOf(name, number));
  }
}

void InternetHeaders::Delete(std::string_view name, std::int32_t index) {
  if (!has(keyOf(name, index))) {
    return;
  }
  remove(keyOf(name, index));
  if (index < 0) {
    return;
  }
  for (std::int32_t number = index; number < std::numeric_limits<std::int32_t>::max() &&
                                    has(keyOf(name, number + 1));
       ++number) {
    renumber(name, number + 1);
  }
}

std::string InternetHeaders::CommaSeparatedValues(std::string_view name) const {
  std::string joined;
  const std::int32_t count = NameCount(name);
  for (std::int32_t number = 0; number < count; ++number) {
    if (number > 0) {
      joined += ", ";
    }
    joined += Value(name, number);
  }
  return joined;
}

void InternetHeaders::DeleteAllHeaders() {
  entries_.clear();
  positions_.clear();
  holes_ = 0;
  firstFreeNumber_.clear();
}

const InternetHeaders::Entry* InternetHeaders::find(std::string_view key) const {
  const auto found = positions_.find(foldCase(key));
  return found == positions_.end() ? nullptr : &entries_[found->second];
}

void InternetHeaders::store(std::string_view key, std::string value) {
  const auto [found, added] = positions_.try_emplace(foldCase(key), entries_.size());
  if (added) {
    entries_.push_back(Entry{std::string(key), std::move(value)});
  } else {
    entries_[found->second].value = std::move(value);
  }
}

void InternetHeaders::remove(std::string_view key) {
  const auto found = positions_.find(foldCase(key));
  if (found == positions_.end()) {
    return;
  }
  Entry& entry = entries_[found->second];
  entry.removed = true;
  entry.value.clear();
  positions_.erase(found);
  ++holes_;
  firstFreeNumber_.erase(foldCase(baseName(key)));
}

// Moves value number `number` of the name to number - 1, in the same place in the order. The
// entry keeps its own spelling of the name.
void InternetHeaders::renumber(std::string_view name, std::int32_t number) {
  const auto found = positions_.find(foldCase(keyOf(name, number)));
  const std::size_t position = found->second;
  positions_.erase(found);
  Entry& entry = entries_[position];
  entry.key = keyOf(std::string_view(entry.key).substr(0, name.size()), number - 1);
  positions_[foldCase(entry.key)] = position;
  firstFreeNumber_.erase(foldCase(baseName(name)));
}

void InternetHeaders::compact() const {
  if (holes_ == 0) {
    return;
  }
  std::erase_if(entries_, [](const Entry& entry) { return entry.removed; });
  holes_ = 0;
  for (std::size_t position = 0; position < entries_.size(); ++position) {
    positions_[foldCase(entries_[position].key)] = position;
  }
}

}  // namespace corvalta::net
