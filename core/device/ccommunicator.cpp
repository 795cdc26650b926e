#include "device/ccommunicator.h"

#include "device/deviceframe.h"
#include "device/iwaitform.h"

#include <QCoreApplication>

// The texts of all transactions are translated in the context "QWidget".

void CCommunicator::showWaiting(IWaitForm &wait)
{
    wait.showStatus(QCoreApplication::translate("QWidget", "Waiting for response"));
}

bool CCommunicator::conclude(const QByteArray &received, IWaitForm &wait)
{
    if (received.isEmpty()) {
        reportNoResponse(wait);
        return false;
    }
    if (!DeviceFrame::isValidResponse(received, m_expectedLength)) {
        fail(wait);
        return false;
    }
    return handleResponse(received, wait);
}

void CCommunicator::fail(IWaitForm &wait)
{
    wait.showResult(QString(), QCoreApplication::translate("QWidget", "CDI sent an invalid response"), false);
}

void CCommunicator::reportNoResponse(IWaitForm &wait)
{
    wait.showResult(QString(), QCoreApplication::translate("QWidget", "CDI did not respond"), false);
}
