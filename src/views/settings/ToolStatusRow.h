// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <optional>

class ElidedLabel;
class QHBoxLayout;
class QLabel;

// One tool's line on the settings screen: a seal for found or missing, the name, a version
// badge when the version is known, and the path.
class ToolStatusRow : public QWidget
{
    Q_OBJECT

public:
    explicit ToolStatusRow(const QString& toolName, QWidget* parent = nullptr);

    void setTool(const std::optional<QString>& path, const std::optional<QString>& version);
    // Where the tool comes from, under its path; empty hides it.
    void setSource(const QString& source);
    // A short line beside the badge, such as an available update; empty hides it.
    void setNote(const QString& note);
    // A button at the row's end, such as an update; the row lays it out.
    void addButton(QWidget* button);

    // What the row shows, for a screen reader and for checks.
    QString sealSymbol() const { return m_sealSymbol; }
    QString badgeText() const;
    QString pathText() const;
    QString sourceText() const;

private:
    QString m_toolName;
    QString m_sealSymbol;
    QLabel* m_seal;
    QLabel* m_badge;
    QLabel* m_note;
    // The row's buttons: beside its texts, or under them when both do not fit.
    QHBoxLayout* m_buttons;
    QString m_description;
    ElidedLabel* m_path;
    QLabel* m_source;
};
