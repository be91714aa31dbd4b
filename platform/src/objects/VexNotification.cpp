#include "VexNotification.h"

VexNotification::~VexNotification() = default;
