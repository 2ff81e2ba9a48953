// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"
