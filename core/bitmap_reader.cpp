#include "core/bitmap_reader.h"

namespace corvane {}
