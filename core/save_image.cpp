#include "core/save_image.h"

namespace corvane {}
