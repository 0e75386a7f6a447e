// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/Services.h"
#include "views/shell/NavigationItem.h"

class QWidget;

// Builds a fresh screen for a sidebar destination; the main window asks for a new one on
// every switch, so no screen state outlives a visit.
class ScreenFactory
{
public:
    explicit ScreenFactory(const Services& services);
    virtual ~ScreenFactory() = default;

    QWidget* create(NavigationItem item, QWidget* parent) const;

    virtual QWidget* converter(QWidget* parent) const;
    virtual QWidget* batch(QWidget* parent) const;
    virtual QWidget* library(QWidget* parent) const;
    virtual QWidget* following(QWidget* parent) const;
    virtual QWidget* settings(QWidget* parent) const;

    const Services& services() const { return m_services; }

private:
    Services m_services;
};
