#pragma once

#include <optional>

#include "base/refusal.h"
#include "platform/platform.h"

namespace corvane {

// Shows why; a refusal without a text is silent.
inline void Refuse(Platform& os, const Refusal& refusal) {
  if (!refusal.text.empty()) os.Message(refusal.text, refusal.title);
}

// True where nothing was refused, false after the message.
inline bool Accepted(Platform& os, const std::optional<Refusal>& refusal) {
  if (refusal) Refuse(os, *refusal);
  return !refusal;
}

}  // namespace corvane
