#include "interaction/help.hpp"

#include "values/errors.hpp"

namespace quintara {

void cmdHelp_Click(const std::string& helpFile, const std::string& windowCaption,
                   HelpLauncher& launcher, MessageBox& messageBox) {
  constexpr std::uint32_t kKeywordIndex = 261;
  if (helpFile.empty()) {
    messageBox.MsgBox(
        "Unable to display Help Contents. There is no Help associated with this project.",
        MsgStyle::Information, windowCaption);
    return;
  }
  try {
    launcher.WinHelpA(launcher.applicationFolder() + "/" + helpFile, kKeywordIndex, "");
  } catch (const RuntimeError& error) {
    messageBox.MsgBox(error.what(), MsgStyle::Plain, "Quintara");
  }
}

}  // namespace quintara
