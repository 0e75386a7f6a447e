// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QTimer;

// A small indeterminate spinner; it only animates while shown.
class ActivitySpinner : public QWidget
{
    Q_OBJECT

public:
    explicit ActivitySpinner(int diameter = 16, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    int m_diameter;
    int m_step = 0;
    QTimer* m_timer;
};
