#include "filters/histogram.h"
