#pragma once

#include <QWidget>
#include <optional>

class ElidedLabel;
class QLabel;

// One tool's line on the settings screen: a seal for found or missing, the name, a version
// badge when the version is known, and the path.
class ToolStatusRow : public QWidget
{
    Q_OBJECT

public:
    explicit ToolStatusRow(const QString& toolName, QWidget* parent = nullptr);

    void setTool(const std::optional<QString>& path, const std::optional<QString>& version);

    // What the row shows, for a screen reader and for checks.
    QString sealSymbol() const { return m_sealSymbol; }
    QString badgeText() const;
    QString pathText() const;

private:
    QString m_toolName;
    QString m_sealSymbol;
    QLabel* m_seal;
    QLabel* m_badge;
    ElidedLabel* m_path;
};
