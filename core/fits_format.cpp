#include "core/fits_format.h"

namespace corvane {}
