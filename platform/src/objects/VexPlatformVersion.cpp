#include "VexPlatformVersion.h"

int VexPlatform_version() {
    return VEX_PLATFORM_VERSION;
}
