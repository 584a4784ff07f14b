#include "platform/controls.hpp"

#include "values/errors.hpp"

namespace quintara {

void ComboBox::AddItem(std::string_view text) {
  showNewItem(text);
  ++count_;
}

void ComboBox::setListIndex(std::int16_t index) {
  if (index < -1 || index >= count_) {
    throw RuntimeError(ErrorKind::SubscriptOutOfRange);
  }
  showIndex(index);
  picked(index);
}

void ComboBox::picked(std::int16_t index) {
  listIndex_ = index;
  if (Click) {
    Click();
  }
}

void CheckBox::setValue(std::int16_t value) {
  showValue(value);
  if (value != value_) {
    toggled(value);
  }
}

void CheckBox::toggled(std::int16_t value) {
  value_ = value;
  if (Click) {
    Click();
  }
}

}  // namespace quintara
