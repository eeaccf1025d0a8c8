#include "core/safe_write.h"

namespace corvane {}
