// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListView>
#include <QStringList>

// A list of painted rows that a screen reader can read and press: each row is an accessible
// child named by the model's Qt::AccessibleTextRole, described by Qt::AccessibleDescriptionRole,
// with the actions the view names for it.
class AccessibleListView : public QListView
{
    Q_OBJECT

public:
    explicit AccessibleListView(QWidget* parent = nullptr);
    ~AccessibleListView() override;

    // The named actions of one row, in the order they appear on it.
    virtual QStringList rowActionNames(int row) const = 0;
    virtual void triggerRowAction(int row, const QString& name) = 0;

    // Installs the accessibility factory for these lists; safe to call more than once.
    static void installAccessibility();
};
