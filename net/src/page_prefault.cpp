#include <corvalta/net/page_prefault.h>

#include <algorithm>
#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace corvalta::net::detail {
namespace {

constexpr std::size_t kStretchBytes = 4 << 20;

}  // namespace

void PagePrefault::ahead(const std::string& page, std::size_t writeEnd) {
#ifdef MADV_POPULATE_WRITE
  if (page.data() != base_) {
    // A new page, or the old one moved as it grew.
    base_ = page.data();
    mappedEnd_ = 0;
  }
  if (writeEnd <= mappedEnd_ || writeEnd > page.capacity()) {
    return;
  }
  const std::size_t end = std::min(page.capacity(), writeEnd + kStretchBytes);
  const auto base = reinterpret_cast<std::uintptr_t>(base_);
  const auto pageSize = static_cast<std::uintptr_t>(::getpagesize());
  const std::uintptr_t from = (base + mappedEnd_) & ~(pageSize - 1);
  // A kernel without this advice refuses it, and the memory is mapped at the faults as before.
  ::madvise(reinterpret_cast<void*>(from), base + end - from, MADV_POPULATE_WRITE);
  mappedEnd_ = end;
#else
  static_cast<void>(page);
  static_cast<void>(writeEnd);
#endif
}

}  // namespace corvalta::net::detail
