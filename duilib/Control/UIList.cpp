#include "Control/UIList.h"
