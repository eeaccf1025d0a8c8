#include "core/open_image.h"

namespace corvane {}
