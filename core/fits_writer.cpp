#include "core/fits_writer.h"

namespace corvane {}
