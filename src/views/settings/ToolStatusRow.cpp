// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/settings/ToolStatusRow.h"

#include "views/components/ElidedLabel.h"
#include "views/components/LineBreaker.h"
#include "views/components/RoundedPanel.h"
#include "views/components/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Theme;

ToolStatusRow::ToolStatusRow(const QString& toolName, QWidget* parent)
    : QWidget(parent)
    , m_toolName(toolName)
{
    auto* outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* panel = new RoundedPanel(QPalette::Base, 0.6, 6, this);
    outer->addWidget(panel);

    const auto [lines, layout] = Theme::lines(panel, {8, 8, 8, 8}, 6, 12);
    m_seal = new QLabel(panel);
    layout->addWidget(m_seal);

    auto* texts = new QWidget(panel);
    auto* column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto* nameRow = new QHBoxLayout;
    nameRow->setSpacing(6);
    nameRow->addWidget(label(toolName, Theme::font(13, QFont::DemiBold), texts));
    m_badge = label(QString(), Theme::font(11, QFont::Bold, Face::monospaced), texts);
    nameRow->addWidget(m_badge);
    m_note = label(QString(), Theme::font(11, QFont::Medium), texts);
    setTextColor(m_note, Theme::orange(palette()));
    m_note->hide();
    nameRow->addWidget(m_note);
    nameRow->addStretch(1);
    column->addLayout(nameRow);
    // A long install path is shortened in the middle rather than widening the window.
    m_path = new ElidedLabel(texts);
    m_path->setFont(Theme::font(11, QFont::Normal, Face::monospaced));
    setTextColor(m_path, secondaryText(palette()));
    column->addWidget(m_path);
    m_source = label(QString(), Theme::font(11), texts);
    setTextColor(m_source, secondaryText(palette()));
    m_source->hide();
    column->addWidget(m_source);
    layout->addWidget(texts, 1);
    auto* buttons = new QWidget(panel);
    m_buttons = Theme::row(buttons, 8);
    new LineBreaker(panel, layout, lines, buttons);
    setTool(std::nullopt, std::nullopt);
}

void ToolStatusRow::setTool(const std::optional<QString>& path,
                            const std::optional<QString>& version)
{
    const bool found = path.has_value();
    m_sealSymbol =
        found ? QStringLiteral("checkmark.seal.fill") : QStringLiteral("xmark.seal.fill");
    setSymbol(m_seal, m_sealSymbol, found ? Theme::green(palette()) : Theme::red(palette()), 18);
    m_seal->setAccessibleName(found ? tr("Found") : tr("Missing"));

    m_badge->setVisible(version.has_value());
    m_badge->setText(QStringLiteral("v") + version.value_or(QString()));
    m_path->setText(path.value_or(tr("Not found in standard paths")));

    // One sentence for a screen reader: name, state, version, path.
    QString description =
        found ? tr("%1: found").arg(m_toolName) : tr("%1: missing").arg(m_toolName);
    if (version)
        description = tr("%1, version %2").arg(description, *version);
    setAccessibleName(m_toolName);
    m_description = description + QStringLiteral(", ") + m_path->text();
    setNote(m_note->text());
}

void ToolStatusRow::setSource(const QString& source)
{
    m_source->setText(source);
    m_source->setVisible(!source.isEmpty());
    setNote(m_note->text());
}

void ToolStatusRow::setNote(const QString& note)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
    // A version with something to say about it (out of date, say) is not shown as all well.
    const QColor tint = note.isEmpty() ? Theme::green(palette()) : Theme::orange(palette());
    m_badge->setStyleSheet(
        QStringLiteral("QLabel { color: %1; background: %2; border-radius: 4px;"
                       " padding: 1px 6px; }")
            .arg(tint.name(), Theme::withOpacity(tint, 0.15).name(QColor::HexArgb)));
    QString description = m_description;
    for (const QString& more : {m_source->text(), note}) {
        if (!more.isEmpty())
            description += QStringLiteral(", ") + more;
    }
    setAccessibleDescription(description);
}

void ToolStatusRow::addButton(QWidget* button)
{
    m_buttons->addWidget(button);
}

QString ToolStatusRow::badgeText() const
{
    return m_badge->isVisibleTo(this) ? m_badge->text() : QString();
}

QString ToolStatusRow::pathText() const
{
    return m_path->text();
}

QString ToolStatusRow::sourceText() const
{
    return m_source->isVisibleTo(this) ? m_source->text() : QString();
}
