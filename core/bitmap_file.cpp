#include "core/bitmap_file.h"

namespace corvane {}
