// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/ThemedScreen.h"

#include "views/components/Theme.h"

#include <QEvent>
#include <QScrollArea>
#include <QVBoxLayout>

ThemedScreen::ThemedScreen(Scrolling scrolling, QWidget* parent)
    : QWidget(parent)
    , m_scrolling(scrolling)
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
}

QWidget* ThemedScreen::beginContent()
{
    delete m_shown;
    m_builtDark = Theme::isDark(palette());
    if (m_scrolling == Scrolling::fills) {
        m_shown = new QWidget(this);
        return m_shown;
    }
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Not a tab stop of its own: Tab brings each control inside into view.
    scroll->setFocusPolicy(Qt::NoFocus);
    // The screen's own background shows through the scroll area.
    scroll->setAutoFillBackground(false);
    scroll->viewport()->setAutoFillBackground(false);
    m_shown = scroll;
    return new QWidget(scroll);
}

void ThemedScreen::finishContent(QWidget* content)
{
    if (auto* scroll = qobject_cast<QScrollArea*>(m_shown))
        scroll->setWidget(content);
    layout()->addWidget(m_shown);
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
