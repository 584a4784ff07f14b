#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/window.hpp"

// Controls that nobody sees: they keep what is assigned. Whoever acts as the user assigns the
// fields, which raises nothing, or calls the setters of the platform, which do.
namespace quintara {

struct HeadlessLabel final : Label {
  explicit HeadlessLabel(const ControlDesign& design)
      : caption(design.caption), foreColor(design.foreColor) {}
  [[nodiscard]] std::string Caption() const override { return caption; }
  void setCaption(std::string_view text) override { caption = text; }
  [[nodiscard]] Colour ForeColor() const override { return foreColor; }

  std::string caption;
  Colour foreColor;
};

struct HeadlessTextBox final : TextBox {
  [[nodiscard]] std::string Text() const override { return text; }
  void setText(std::string_view value) override { text = value; }
  void SetFocus() override { hasFocus = true; }

  std::string text;
  bool hasFocus = false;  ///< it was given the focus; no other control takes it away
};

struct HeadlessComboBox final : ComboBox {
  void setEnabled(bool value) override { enabled = value; }

  std::vector<std::string> items;
  bool enabled = true;

 protected:
  void showNewItem(std::string_view text) override { items.emplace_back(text); }
  void showIndex(std::int16_t /*index*/) override {}
};

struct HeadlessCheckBox final : CheckBox {
 protected:
  void showValue(std::int16_t /*value*/) override {}
};

}  // namespace quintara
