// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// The converter header's round red-to-orange badge with its symbol.
class AppBadge : public QWidget
{
    Q_OBJECT

public:
    explicit AppBadge(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
