// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QScrollArea;

// A screen whose parts take their colours when they are made. When the appearance turns light
// or dark, the parts are made again from the services' state and what the user typed.
class ThemedScreen : public QWidget
{
public:
    enum class Scrolling
    {
        // The parts sit in a scroll area that fills the screen.
        scrolls,
        // The parts fill the screen; lists scroll themselves.
        fills
    };

    explicit ThemedScreen(Scrolling scrolling, QWidget* parent = nullptr);

protected:
    // Makes the screen's parts: beginContent(), the parts, then finishContent().
    virtual void buildContent() = 0;
    // Drops the old parts and returns an empty page for new ones.
    QWidget* beginContent();
    // Puts the page on screen; call it once the parts show the current state.
    void finishContent(QWidget* content);

    void changeEvent(QEvent* event) override;

private:
    Scrolling m_scrolling;
    QWidget* m_shown = nullptr;
    bool m_builtDark = false;
};
