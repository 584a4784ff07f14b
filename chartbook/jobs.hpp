#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace quintara::chartbook {

/// Does `count` pieces of work in processes of their own, because the window's program is made for
/// one thread, and hands each answer to `done` as it comes. A process that ends early costs the
/// piece it was at, which gets no answer; the others go on. All end with this one.
/// Throws std::system_error when no process can be started.
void inProcesses(std::size_t count, std::size_t jobs,
                 const std::function<std::string(std::size_t piece)>& work,
                 const std::function<void(std::size_t piece, const std::string& answer)>& done);

}  // namespace quintara::chartbook
