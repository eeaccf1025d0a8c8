#include "core/startup.h"

namespace corvane {}
