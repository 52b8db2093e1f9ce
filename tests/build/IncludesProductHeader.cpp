// Compiles in the product's layer; in the framework's, the compiler must not find the header.
#include "varlo/dsp/DelayEngine.h"
