#include "app/module1.hpp"

#include <array>

#include "values/text.hpp"

namespace quintara {

namespace {

constexpr std::uint32_t kUserDefaultLocale = 0x400;
constexpr std::int32_t kDecimalSeparator = 14;
constexpr std::int32_t kThousandsSeparator = 15;

}  // namespace

std::string GetLocale(LocaleQuery& locale, std::int32_t LCType) {
  std::array<char, 256> buffer{};
  const int n = locale.GetLocaleInfoA(kUserDefaultLocale, LCType, buffer.data(),
                                      static_cast<int>(buffer.size()));
  if (n <= 0) {
    return "";
  }
  // The count includes the terminating zero.
  return {buffer.data(), static_cast<std::size_t>(n) - 1};
}

std::unique_ptr<frmQuintara> Main(const Platform& platform, const QuoteHosts& hosts) {
  sDecimalSep = GetLocale(platform.locale, kDecimalSeparator);
  sThousandSep = GetLocale(platform.locale, kThousandsSeparator);
  auto window = std::make_unique<frmQuintara>(platform, hosts);
  window->Show();
  return window;
}

}  // namespace quintara
