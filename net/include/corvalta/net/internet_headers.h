#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace corvalta::net {

// A list of named text headers, as at the head of an HTTP or mail message, in which one name
// may hold several values.
//
// Every value is one entry under a key: the first value of name N lies under "N", the second
// under "N:1", the third under "N:2", and so on. Positions (Name(i), Value(i)) count entries, so
// a name with three values stands at three positions. Names match without regard to ASCII case;
// an entry keeps the spelling it was first stored with, also when a later call spells the name
// differently. Entries enumerate in the order they were first stored; a value that closes up
// after a Delete takes over the place of the entry it moves into, so the survivors keep their
// order.
//
// Cost. The map is a vector of entries in order plus a hash index from the case-folded key to
// the entry's position, so a look-up by key is one hash probe. Appending a value for a name
// that already holds k values would, done naively, probe N:1, N:2, ... N:k before finding the
// free key, and a block of k lines with the same name would cost k*k/2 probes: a server could
// stall the client with a few hundred kilobytes of "X: y" lines. We keep, per base name, the
// lowest value number that may still be free (every number below it is taken), so an append
// probes once or twice and parsing a block is linear in its size. Removing a numbered value
// resets that hint, and the next append re-probes from 1, which costs once what it saves after.
// A removal leaves a hole in the vector; holes are squeezed out the next time something asks
// by position, so a run of removals costs one pass, not one per removal.
class InternetHeaders {
 public:
  InternetHeaders() = default;

  // Number of entries (values, not distinct names).
  [[nodiscard]] std::int32_t Count() const;
  // Base name of the entry at the position; empty outside 0 to Count() - 1.
  [[nodiscard]] std::string Name(std::int32_t index) const;
  // Number of values under the name, counted up to the first gap in their numbers.
  [[nodiscard]] std::int32_t NameCount(std::string_view name) const;
  // The parsed block as it was given, or, for a list built by hand, FormatHTTPHeaders().
  [[nodiscard]] std::string Source() const;
  [[nodiscard]] std::string Value(std::string_view name) const;
  // Value number `index` of the name (0 is the first; below 0 reads the first); empty if none.
  [[nodiscard]] std::string Value(std::string_view name, std::int32_t index) const;
  // The value of the entry at the position; empty outside 0 to Count() - 1.
  [[nodiscard]] std::string Value(std::int32_t index) const;

  void AppendHeader(std::string_view name, std::string value);
  // Makes `value` the only value of the name.
  void SetHeader(std::string_view name, std::string value);
  // Sets value number `index` of the name, leaving a gap in the numbers if it lies beyond them.
  void SetHeader(std::string_view name, std::string value, std::int32_t index);
  void Delete(std::string_view name);
  // Removes one value; the later values of the name close up.
  void Delete(std::string_view name, std::int32_t index);
  [[nodiscard]] std::string CommaSeparatedValues(std::string_view name) const;
  // Removes every entry; Source() of a parsed list still gives the parsed block.
  void DeleteAllHeaders();

 private:
  friend class HTTPSocket;
  friend struct InternetHeadersAccess;

  struct Entry {
    std::string key;
    std::string value;
    bool removed = false;
  };

  // Replaces the list with the headers of a raw block (status line and all).
  void ParseHeaders(std::string text);
  // One "name: value" line per entry, joined by CR LF, no line end behind the last.
  [[nodiscard]] std::string FormatHTTPHeaders() const;
  // The well-known mail headers first, in their customary order, then the rest.
  [[nodiscard]] std::string FormatEmailHeaders() const;

  [[nodiscard]] const Entry* find(std::string_view key) const;
  [[nodiscard]] bool has(std::string_view key) const { return find(key) != nullptr; }
  void store(std::string_view key, std::string value);
  void remove(std::string_view key);
  void renumber(std::string_view name, std::int32_t number);
  void compact() const;

  // Mutable so that position look-ups, which are const, can squeeze out holes first.
  mutable std::vector<Entry> entries_;
  mutable std::unordered_map<std::string, std::size_t> positions_;
  mutable std::size_t holes_ = 0;
  // Per case-folded base name: every value number from 1 below this one is taken.
  std::unordered_map<std::string, std::int32_t> firstFreeNumber_;
  std::string rawHeaders_;
};

}  // namespace corvalta::net
