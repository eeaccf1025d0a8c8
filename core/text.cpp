#include "core/text.h"

namespace corvane {}
