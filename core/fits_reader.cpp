#include "core/fits_reader.h"

namespace corvane {}
