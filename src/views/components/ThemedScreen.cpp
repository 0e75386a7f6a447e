#include "views/components/ThemedScreen.h"

#include "services/DownloadEngine.h"
#include "views/components/Theme.h"

#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QScrollArea>
#include <QUrl>
#include <QVBoxLayout>

ThemedScreen::ThemedScreen(QWidget* parent)
    : QWidget(parent)
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
}

QWidget* ThemedScreen::beginContent()
{
    delete m_scroll;
    m_builtDark = Theme::isDark(palette());

    m_scroll = new QScrollArea(this);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The screen's own background shows through the scroll area.
    m_scroll->setAutoFillBackground(false);
    m_scroll->viewport()->setAutoFillBackground(false);
    return new QWidget(m_scroll);
}

void ThemedScreen::finishContent(QWidget* content)
{
    m_scroll->setWidget(content);
    layout()->addWidget(m_scroll);
}

void ThemedScreen::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // Later, because the new palette is still being handed to every widget of the application.
    if (event->type() == QEvent::PaletteChange && Theme::isDark(palette()) != m_builtDark) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (Theme::isDark(palette()) != m_builtDark)
                    buildContent();
            },
            Qt::QueuedConnection);
    }
}

QString ThemedScreen::folderPath(const QUrl& folder)
{
    const QString path = folder.isLocalFile() ? folder.toLocalFile() : folder.path();
    return path.isEmpty() ? path : QDir::cleanPath(path);
}

void ThemedScreen::chooseTargetFolder(DownloadEngine& engine)
{
    const QString chosen = QFileDialog::getExistingDirectory(
        this, QStringLiteral("Select Download Folder"), folderPath(engine.targetFolder()));
    if (chosen.isEmpty())
        return;
    engine.setTargetFolder(QUrl::fromLocalFile(chosen));
    engine.savePreferences();
}
