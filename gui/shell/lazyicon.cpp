#include "shell/lazyicon.h"

#include <QIconEngine>
#include <QPainter>

#include <optional>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)

namespace {

// Hands every question on to the icon read from the file, which it reads on the first one.
class CLazyIconEngine : public QIconEngine
{
public:
    explicit CLazyIconEngine(QString fileName)
        : m_fileName(std::move(fileName))
    { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        loaded().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return loaded().actualSize(size, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return loaded().pixmap(size, mode, state);
    }
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override
    {
        return loaded().pixmap(size, scale, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override
    {
        return loaded().availableSizes(mode, state);
    }
    bool isNull() override { return loaded().isNull(); }
    QString key() const override { return QStringLiteral("CLazyIconEngine"); }
    QIconEngine *clone() const override { return new CLazyIconEngine(*this); }

private:
    const QIcon &loaded()
    {
        if (!m_icon)
            m_icon = QIcon(m_fileName);
        return *m_icon;
    }

    QString m_fileName;
    std::optional<QIcon> m_icon;
};

} // namespace

QIcon lazyIcon(const QString &fileName)
{
    return QIcon(new CLazyIconEngine(fileName));
}

#else

QIcon lazyIcon(const QString &fileName)
{
    return QIcon(fileName);
}

#endif
