#pragma once

#include <QLoggingCategory>

// Every frame sent to and received from a CDI, in hex; off unless switched on with
// QT_LOGGING_RULES="sparkwright.device.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcDevice)
