#include "filters/geometry.h"
