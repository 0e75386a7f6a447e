#include "Symbols.h"
