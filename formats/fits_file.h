#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/float_image.h"
#include "base/refusal.h"
#include "formats/fits_format.h"

namespace corvane {

// The cards up to END. On a refusal `cards` stay as they were.
std::optional<Refusal> ReadFitsCards(const std::filesystem::path& path, std::vector<std::string>& cards);

// The physical values of the image that `layout` describes. On a refusal `values` stay as they were.
std::optional<Refusal> ReadFitsValues(const std::filesystem::path& path, const FitsLayout& layout,
                                      FloatImage& values);

// Reads and decodes all pixels of `file` into `values`; false when the file ends before them. Needs one small
// buffer beside the values.
bool ReadPixels(const InputFile& file, const FitsLayout& layout, float* values);

}  // namespace corvane
