#pragma once

#include <QIcon>
#include <span>
#include <string_view>

namespace corvane {

// The toolbar picture of a key ("open", "hist", ...), drawn at whatever size is asked for in the colors of
// the palette in use, so that it is sharp at every scale and clear on light and dark desktops. Null for a key
// without a picture.
QIcon ToolIcon(std::string_view key);

// Every key that has a picture.
std::span<const std::string_view> ToolIconKeys();

}  // namespace corvane
