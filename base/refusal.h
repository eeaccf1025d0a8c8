#pragma once

#include <string>

namespace corvane {

// Why a file or a command is refused: the message box that the store operation shows.
struct Refusal {
  std::string title;
  std::string text;
  bool operator==(const Refusal&) const = default;
};

// What is said where memory does not suffice for a picture.
inline Refusal NotEnoughMemory() { return {"FILE OPEN ERROR", "Not enough memory for this image."}; }

}  // namespace corvane
