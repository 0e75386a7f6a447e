// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>

class QBoxLayout;
class QWidget;

// Keeps a group of controls at the end of a line while the whole line fits its owner's width,
// and moves it onto a line of its own under it otherwise: rows whose texts run long in some
// languages never squeeze a button's title. It looks again whenever the owner is resized or
// the owner's or the group's layout changes.
class LineBreaker : public QObject
{
public:
    // line holds the texts; lines is the column the line sits in; group is added to line.
    LineBreaker(QWidget* owner, QBoxLayout* line, QBoxLayout* lines, QWidget* group);

    void update();
    bool broken() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> m_owner;
    QBoxLayout* m_line;
    QBoxLayout* m_lines;
    QWidget* m_group;
    bool m_pending = false;
};
