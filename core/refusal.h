#pragma once

#include <string>

namespace corvane {

// Why a file or a command is refused: the message box that the store operation shows.
struct Refusal {
  std::string title;
  std::string text;
  bool operator==(const Refusal&) const = default;
};

}  // namespace corvane
