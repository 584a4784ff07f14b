#pragma once

#include <string>

#include "platform/platform.hpp"

namespace quintara {

class QtScreen final : public Screen {
 public:
  [[nodiscard]] float Width() const override;
  [[nodiscard]] float Height() const override;
  void setMousePointer(std::int16_t pointer) override;
  void setMouseIcon(std::string_view picture) override;

 private:
  void showPointer() const;

  std::int16_t pointer_ = 0;
  std::string icon_;
};

}  // namespace quintara
