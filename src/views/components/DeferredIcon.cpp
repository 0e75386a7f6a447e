#include "views/components/DeferredIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <memory>

namespace DeferredIcon {

namespace {

// Shared by every copy of one deferred icon, so the icon is built at most once.
struct Source
{
    std::function<QIcon()> factory;
    bool knownNotNull = false;
    QIcon icon;
    bool built = false;

    const QIcon& get()
    {
        if (!built) {
            built = true;
            icon = factory();
            factory = nullptr;
        }
        return icon;
    }
};

class Engine : public QIconEngine
{
public:
    explicit Engine(std::shared_ptr<Source> source)
        : m_source(std::move(source))
    {}

    // A device-pixel-ratio of 1 hands the size straight to the built icon's own engine, which
    // is what QIcon does with the size it passes in here.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return m_source->get().pixmap(size, 1.0, mode, state);
    }

    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        // QIcon scales the size by the screen's ratio before it asks; only at a ratio of 1
        // does it pass the size through unchanged. A pixmap icon's pixmaps have its actual
        // size, so their size answers at any ratio.
        if (!(qApp->devicePixelRatio() > 1.0))
            return m_source->get().actualSize(size, mode, state);
        const QPixmap made = pixmap(size, mode, state);
        return made.isNull() ? QSize() : made.size();
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const QPaintDevice* device = painter->device();
        const qreal ratio = device ? device->devicePixelRatio() : qApp->devicePixelRatio();
        painter->drawPixmap(rect, pixmap(rect.size() * ratio, mode, state));
    }

    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override
    {
        return m_source->get().availableSizes(mode, state);
    }

    bool isNull() override
    {
        if (m_source->knownNotNull && !m_source->built)
            return false;
        return m_source->get().isNull();
    }

    QString iconName() override { return m_source->get().name(); }
    QString key() const override { return QStringLiteral("DeferredIcon"); }
    QIconEngine* clone() const override { return new Engine(m_source); }

private:
    std::shared_ptr<Source> m_source;
};

} // namespace

QIcon make(std::function<QIcon()> factory, bool knownNotNull)
{
    auto source = std::make_shared<Source>();
    source->factory = std::move(factory);
    source->knownNotNull = knownNotNull;
    return QIcon(new Engine(std::move(source)));
}

} // namespace DeferredIcon
