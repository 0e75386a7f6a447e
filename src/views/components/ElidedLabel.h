// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// One line of text shortened in the middle when it does not fit, so that both the start of
// a path and its last folder stay readable.
class ElidedLabel : public QWidget
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString& text);
    // The text as drawn at the current width.
    QString displayedText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
};
