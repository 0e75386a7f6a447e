// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProgressBar>

// A thin rounded track with a rounded fill in the theme's colours (the faint text colour and
// the accent), painted here rather than by a style sheet.
class SlimProgressBar : public QProgressBar
{
public:
    explicit SlimProgressBar(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
