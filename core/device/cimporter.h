#pragma once

#include "device/ccommunicator.h"

class DefaultLibrary;
class IImportReceiver;

// Reads back the profile the CDI holds; the template of its motorbike type supplies everything
// the device image does not carry.
class CImporter : public CCommunicator
{
public:
    CImporter(const DefaultLibrary &library, IImportReceiver &receiver);

    void start(IWaitForm &wait) override;
    QByteArray requestBytes() const override { return m_request; }

protected:
    bool handleResponse(const QByteArray &frame, IWaitForm &wait) override;

private:
    const QByteArray m_request;
    const DefaultLibrary &m_library;
    IImportReceiver &m_receiver;
};
