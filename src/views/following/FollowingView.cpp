// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/following/FollowingView.h"

#include "models/DisplayTexts.h"
#include "views/components/ElidedLabel.h"
#include "views/components/GlassCard.h"
#include "views/components/LineBreaker.h"
#include "views/components/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Theme;

FollowingView::FollowingView(FollowService& following, QWidget* parent)
    : ThemedScreen(Scrolling::scrolls, parent)
    , m_following(following)
{
    setAccessibleName(tr("Following"));
    buildContent();
    connect(&m_following, &FollowService::changed, this, &FollowingView::updateRows);
}

QString FollowingView::checkedText(const QDateTime& lastCheck, const QDateTime& now)
{
    if (!lastCheck.isValid())
        return tr("Not checked yet");
    const qint64 minutes = std::max<qint64>(lastCheck.secsTo(now) / 60, 0);
    if (minutes < 1)
        return tr("Checked just now");
    if (minutes < 60)
        return tr("Checked %n minutes ago", nullptr, int(minutes));
    if (minutes < 48 * 60)
        return tr("Checked %n hours ago", nullptr, int(minutes / 60));
    return tr("Checked %n days ago", nullptr, int(minutes / (24 * 60)));
}

void FollowingView::buildContent()
{
    const QString typed = m_link ? m_link->text() : QString();
    QWidget* content = beginContent();
    const QMargins shadow = GlassCard::shadowMargins();
    QVBoxLayout* layout = column(content, 16 - shadow.top() - shadow.bottom());
    layout->setContentsMargins(24 - shadow.left(), 24, 24 - shadow.right(), 24 - shadow.bottom());

    auto* header = new QWidget;
    QHBoxLayout* headerRow = row(header, 12);
    headerRow->setContentsMargins(shadow.left(), 0, shadow.right(), 0);
    auto* titles = new QWidget(header);
    QVBoxLayout* titleColumn = column(titles, 2);
    titleColumn->addWidget(label(tr("Following"), Theme::font(22, QFont::Bold), titles));
    QLabel* subtitle = label(tr("New uploads of the channels and playlists you follow are ripped "
                                "by themselves, each once."),
                             Theme::font(12), titles);
    subtitle->setWordWrap(true);
    setTextColor(subtitle, secondaryText(palette()));
    titleColumn->addWidget(subtitle);
    headerRow->addWidget(titles, 1);
    QPushButton* checkAll = smallButton(tr("Check All"), QStringLiteral("arrow.clockwise"), header);
    connect(checkAll, &QPushButton::clicked, &m_following, &FollowService::checkAll);
    headerRow->addWidget(checkAll, 0, Qt::AlignTop);
    layout->addWidget(header);
    layout->addWidget(buildAddCard());

    m_empty = label(tr("Nothing followed yet. Follow a channel or a playlist: Veldtone looks at it "
                       "again after it starts and every few hours, and rips each new upload once, "
                       "as you chose when you followed it."),
                    Theme::font(12));
    m_empty->setWordWrap(true);
    m_empty->setContentsMargins(shadow.left(), 8, shadow.right(), 0);
    setTextColor(m_empty, secondaryText(palette()));
    layout->addWidget(m_empty);
    auto* rows = new QWidget;
    m_rows = column(rows, 0);
    m_rowOrder.clear();
    m_rowWidgets.clear();
    layout->addWidget(rows);
    layout->addStretch(1);
    m_link->setText(typed);
    updateRows();
    finishContent(content);
}

QWidget* FollowingView::buildAddCard()
{
    auto* content = new QWidget;
    QVBoxLayout* layout = column(content, 8);
    auto* line = new QWidget(content);
    QHBoxLayout* lineRow = row(line, 8);
    m_link = new QLineEdit(line);
    m_link->setPlaceholderText(tr("A channel or playlist link"));
    m_link->setAccessibleName(tr("Channel or playlist link"));
    m_link->setClearButtonEnabled(true);
    connect(m_link, &QLineEdit::returnPressed, this, &FollowingView::follow);
    lineRow->addWidget(m_link, 1);
    QPushButton* followButton = smallButton(tr("Follow"), QStringLiteral("plus.circle.fill"), line);
    makeProminent(followButton, accent(palette()));
    connect(followButton, &QPushButton::clicked, this, &FollowingView::follow);
    lineRow->addWidget(followButton);
    layout->addWidget(line);

    auto* options = new QWidget(content);
    QHBoxLayout* optionRow = row(options, 8);
    QLabel* latestLabel = label(tr("Also rip the latest"), Theme::font(12), options);
    optionRow->addWidget(latestLabel);
    m_latest = new QSpinBox(options);
    m_latest->setRange(0, 50);
    m_latest->setAccessibleName(tr("Also rip the latest"));
    latestLabel->setBuddy(m_latest);
    optionRow->addWidget(m_latest);
    m_asAlbum = new QCheckBox(tr("Rip as album"), options);
    m_asAlbum->setFont(Theme::font(12));
    optionRow->addSpacing(12);
    optionRow->addWidget(m_asAlbum);
    optionRow->addStretch(1);
    layout->addWidget(options);
    m_refused =
        label(tr("That link is followed already, or is not a web link."), Theme::font(11), content);
    setTextColor(m_refused, orange(palette()));
    m_refused->hide();
    layout->addWidget(m_refused);
    return new GlassCard(content, 12, 12, this);
}

void FollowingView::follow()
{
    const bool followed =
        m_following.follow(m_link->text(), m_latest->value(), m_asAlbum->isChecked());
    m_refused->setVisible(!followed);
    if (followed)
        m_link->clear();
}

FollowingView::Row FollowingView::buildRow(const QUuid& id)
{
    Row row;
    auto* content = new QWidget;
    const auto [lines, layout] = Theme::lines(content, {}, 8, 12);
    auto* texts = new QWidget(content);
    QVBoxLayout* textColumn = column(texts, 2);
    // Long names and links are shortened in the middle rather than widening the screen.
    row.name = new ElidedLabel(texts);
    row.name->setFont(Theme::font(13, QFont::DemiBold));
    textColumn->addWidget(row.name);
    for (QLabel** line : {&row.choices, &row.state}) {
        *line = label(QString(), Theme::font(11), texts);
        (*line)->setWordWrap(true);
        textColumn->addWidget(*line);
    }
    // The link sits between the name and the choices.
    const auto subscriptions = m_following.subscriptions();
    const auto found = std::find_if(subscriptions.cbegin(), subscriptions.cend(),
                                    [&id](const Subscription& each) { return each.id == id; });
    auto* link = new ElidedLabel(texts);
    link->setFont(Theme::font(11, QFont::Normal, Face::monospaced));
    link->setText(found != subscriptions.cend() ? found->link : QString());
    setTextColor(link, secondaryText(palette()));
    textColumn->insertWidget(1, link);
    layout->addWidget(texts, 1);
    // The row's controls: beside its texts, or under them when both do not fit.
    auto* controls = new QWidget(content);
    QHBoxLayout* controlRow = Theme::row(controls, 12);
    new LineBreaker(content, layout, lines, controls);

    // The format its rips take, changed in place.
    row.format = new QComboBox(content);
    for (AudioFormat each : AudioFormat::allCases())
        row.format->addItem(each.displayName(), each.rawValue());
    QComboBox* format = row.format;
    connect(format, &QComboBox::activated, this, [this, id, format] {
        for (const Subscription& subscription : m_following.subscriptions()) {
            if (subscription.id != id)
                continue;
            RipChoices changed = subscription.choices;
            changed.format = AudioFormat::fromRawValue(format->currentData().toString());
            m_following.edit(id, changed, subscription.asAlbum);
        }
    });
    controlRow->addWidget(row.format, 0, Qt::AlignTop);
    row.check = smallButton(tr("Check Now"), QString(), content);
    connect(row.check, &QPushButton::clicked, &m_following,
            [this, id] { m_following.checkNow(id); });
    controlRow->addWidget(row.check, 0, Qt::AlignTop);
    row.unfollow = smallButton(tr("Unfollow"), QString(), content);
    connect(row.unfollow, &QPushButton::clicked, this, [this, id, name = row.name] {
        auto* question = new QMessageBox(
            QMessageBox::Question, tr("Unfollow %1?").arg(name->accessibleName()),
            tr("New uploads are no longer ripped. The files and library records ripped so far "
               "stay."),
            QMessageBox::Cancel, this);
        QPushButton* confirm = question->addButton(tr("Unfollow"), QMessageBox::DestructiveRole);
        question->setAttribute(Qt::WA_DeleteOnClose);
        connect(question, &QMessageBox::finished, this, [this, id, question, confirm] {
            if (question->clickedButton() == confirm)
                m_following.unfollow(id);
        });
        question->open();
    });
    controlRow->addWidget(row.unfollow, 0, Qt::AlignTop);
    row.card = new GlassCard(content, 12, 12);
    return row;
}

void FollowingView::fillRow(Row& row, const Subscription& subscription)
{
    const bool checking = m_following.checking() == subscription.id;
    if (row.shown == std::pair(subscription, checking))
        return;
    row.shown = std::pair(subscription, checking);
    row.name->setText(subscription.name);
    row.name->setAccessibleName(subscription.name);
    row.card->setAccessibleName(subscription.name);
    row.format->setAccessibleName(tr("Format for %1").arg(subscription.name));
    row.check->setAccessibleName(tr("Check %1 now").arg(subscription.name));
    row.unfollow->setAccessibleName(tr("Unfollow %1").arg(subscription.name));
    if (subscription.choices.format)
        row.format->setCurrentIndex(row.format->findData(subscription.choices.format->rawValue()));
    QStringList choices;
    if (subscription.choices.format)
        choices << subscription.choices.format->displayName();
    if (subscription.choices.format && subscription.choices.format->supportsBitrate() &&
        subscription.choices.quality)
        choices << subscription.choices.quality->displayName();
    if (subscription.choices.folder)
        choices << QDir::toNativeSeparators(*subscription.choices.folder);
    if (subscription.asAlbum)
        choices << tr("as album");
    row.choices->setText(choices.join(DisplayTexts::kSeparator));
    setTextColor(row.choices, secondaryText(palette()));
    const bool failed = !checking && !subscription.error.isEmpty();
    QString state = checking ? tr("Checking…")
                             : checkedText(subscription.lastCheck, QDateTime::currentDateTimeUtc());
    if (!checking && !failed)
        state +=
            DisplayTexts::kSeparator + tr("%n tracks found", nullptr, subscription.tracksFound);
    row.state->setText(failed ? subscription.error : state);
    setTextColor(row.state, failed ? red(palette()) : secondaryText(palette()));
    row.check->setEnabled(!checking);
}

void FollowingView::updateRows()
{
    QList<QUuid> order;
    for (const Subscription& subscription : m_following.subscriptions())
        order << subscription.id;
    if (order != m_rowOrder) {
        while (QLayoutItem* item = m_rows->takeAt(0)) {
            delete item->widget();
            delete item;
        }
        m_rowWidgets.clear();
        for (const QUuid& id : order) {
            const Row row = buildRow(id);
            m_rowWidgets.insert(id, row);
            m_rows->addWidget(row.card);
        }
        m_rowOrder = order;
    }
    for (const Subscription& subscription : m_following.subscriptions())
        fillRow(m_rowWidgets[subscription.id], subscription);
    m_empty->setVisible(order.isEmpty());
}
