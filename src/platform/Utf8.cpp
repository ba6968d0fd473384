#include "platform/Utf8.h"
