#include "filters/adjust.h"
