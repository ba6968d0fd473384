#include "platform/Xml.h"
