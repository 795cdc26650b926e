// Windows has no pseudo-terminals: a virtual CDI would need a virtual COM port driver, so here it
// cannot be opened and never has a line to read or write.
#include "device/cvirtualcdi.h"

QString CVirtualCdi::open()
{
    closePty();
    return QStringLiteral("the virtual CDI needs a pseudo-terminal, which Windows does not have");
}

void CVirtualCdi::closePty()
{
    m_input.clear();
}

void CVirtualCdi::onReadable() { }

bool CVirtualCdi::writeToLine(const QByteArray &bytes)
{
    Q_UNUSED(bytes)
    return false;
}
