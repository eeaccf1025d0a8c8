#include "core/fits_reader.h"

#include <string>
#include <utility>

#include "core/accepted.h"
#include "formats/fits_file.h"

namespace corvane {

void ReadFitsHeader(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  cv.HeaderOK = Accepted(os, ReadFitsCards(path, cv.HeaderCards));
  if (!cv.HeaderOK) return;
  if (cv.HeaderCards[0].substr(5, 25).find('T') == std::string::npos)
    os.Message("File is not a standard FITS file and may not display properly!", "UNKNOWN FORMAT");
  cv.HeaderCount = static_cast<int>(cv.HeaderCards.size());
}

void ReadFitsData(ModCV& cv, Platform& os, const std::filesystem::path& path) {
  FitsLayout layout;
  cv.LoadFailed = !Accepted(os, ReadLayout(cv.HeaderCards, layout)) ||
                  !Accepted(os, ReadFitsValues(path, layout, cv.ImageData));
  if (cv.LoadFailed) return;
  cv.BytesPerPixel = layout.bytesPerPixel;
  cv.ImageWidth = static_cast<float>(layout.width);
  cv.ImageHeight = static_cast<float>(layout.height);
  cv.DataOffset = static_cast<float>(layout.start + 1);
  const std::int64_t dataBytes = layout.DataBytes();
  cv.FitsFileSize = std::to_string(layout.start + dataBytes + BlockPadding(dataBytes));
}

}  // namespace corvane
