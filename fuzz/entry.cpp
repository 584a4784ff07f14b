#include <cstddef>
#include <cstdint>

#include "target.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quintara::fuzz::tryInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
