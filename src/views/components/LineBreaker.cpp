// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/components/LineBreaker.h"

#include <QBoxLayout>
#include <QEvent>
#include <QWidget>

LineBreaker::LineBreaker(QWidget* owner, QBoxLayout* line, QBoxLayout* lines, QWidget* group)
    : QObject(owner)
    , m_owner(owner)
    , m_line(line)
    , m_lines(lines)
    , m_group(group)
{
    // The group never widens the line's minimum: the owner keeps the width it is given, and
    // that width decides where the group goes.
    m_group->setMinimumWidth(1);
    m_line->addWidget(m_group);
    owner->installEventFilter(this);
    group->installEventFilter(this);
}

bool LineBreaker::broken() const
{
    return m_line->indexOf(m_group) < 0;
}

void LineBreaker::update()
{
    if (!m_owner)
        return;
    // The texts at their full width, not shortened or wrapped, and the group at its own.
    int needed = m_line->sizeHint().width();
    if (broken())
        needed += m_line->spacing() + m_group->sizeHint().width();
    const QMargins margins = m_lines->contentsMargins();
    const bool fits = needed <= m_owner->width() - margins.left() - margins.right();
    if (fits != broken())
        return;
    if (fits) {
        m_lines->removeWidget(m_group);
        m_line->addWidget(m_group);
    } else {
        m_line->removeWidget(m_group);
        m_lines->insertWidget(m_lines->indexOf(m_line) + 1, m_group, 0, Qt::AlignRight);
    }
}

bool LineBreaker::eventFilter(QObject* watched, QEvent* event)
{
    // A resize, or a text or control shown, hidden or retitled on the line: measured once the
    // layouts have taken the change in.
    if ((event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) && !m_pending) {
        m_pending = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_pending = false;
                update();
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
