#pragma once

#include <string>

#include "platform/platform.hpp"

namespace quintara {

/// The help button: opens `helpFile`, a file name in the program's folder, in the help viewer at
/// its index. An empty setting and a launch that could not be made are told.
void cmdHelp_Click(const std::string& helpFile, const std::string& windowCaption,
                   HelpLauncher& launcher, MessageBox& messageBox);

}  // namespace quintara
