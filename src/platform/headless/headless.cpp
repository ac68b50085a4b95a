#include "platform/headless/headless.h"

HeadlessPlatform headless;
