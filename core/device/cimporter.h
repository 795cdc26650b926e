#pragma once

#include "device/ccommunicator.h"

#include <memory>

class DefaultLibrary;

// Reads back the profile the CDI holds; the template of its motorbike type supplies everything
// the device image does not carry.
class CImporter : public CCommunicator
{
public:
    explicit CImporter(std::shared_ptr<const DefaultLibrary> library);

    QByteArray requestBytes() const override { return m_request; }

protected:
    ExchangeResult handleResponse(const QByteArray &frame) const override;

private:
    const QByteArray m_request;
    const std::shared_ptr<const DefaultLibrary> m_library;
};
