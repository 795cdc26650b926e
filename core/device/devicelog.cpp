#include "device/devicelog.h"

Q_LOGGING_CATEGORY(lcDevice, "sparkwright.device", QtInfoMsg)
