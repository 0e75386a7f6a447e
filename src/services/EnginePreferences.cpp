// SPDX-License-Identifier: GPL-3.0-or-later
#include "EnginePreferences.h"

#include "services/SettingsKeys.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace {

std::optional<bool> readBoolean(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toDouble() != 0;
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        // The INI file gives every value back as text.
        const QString text = value.toString().trimmed().toLower();
        if (text == u"true" || text == u"yes")
            return true;
        if (text == u"false" || text == u"no")
            return false;
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        if (isNumber)
            return number != 0;
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::optional<QString> readString(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    if (value.typeId() == QMetaType::QByteArray)
        return QString::fromUtf8(value.toByteArray());
    return std::nullopt;
}

} // namespace

namespace EnginePreferences {

QUrl defaultTargetFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    if (folder.isEmpty())
        folder = QDir::homePath();
    return QUrl::fromLocalFile(folder.endsWith(QLatin1Char('/')) ? folder
                                                                 : folder + QLatin1Char('/'));
}

bool isUsableProxy(const QString& text)
{
    if (text.isEmpty())
        return true;
    static const QStringList schemes = {QStringLiteral("http"),   QStringLiteral("https"),
                                        QStringLiteral("socks4"), QStringLiteral("socks4a"),
                                        QStringLiteral("socks5"), QStringLiteral("socks5h")};
    const QUrl url(text, QUrl::StrictMode);
    // A text with spaces or a leading "-" could be read as something else than a link.
    return url.isValid() && schemes.contains(url.scheme()) && !url.host().isEmpty() &&
           !text.contains(u' ') && (url.path().isEmpty() || url.path() == u"/");
}

QStringList cookieBrowsers()
{
    return {QStringLiteral("firefox"), QStringLiteral("chromium"), QStringLiteral("chrome"),
            QStringLiteral("brave"),   QStringLiteral("edge"),     QStringLiteral("opera"),
            QStringLiteral("vivaldi")};
}

OutputChoices load(const QSettings& settings)
{
    OutputChoices choices;
    choices.targetFolder = defaultTargetFolder();
    if (const auto text = readString(settings.value(SettingsKeys::targetFolder));
        text && !text->isEmpty()) {
        const QUrl folder(*text, QUrl::StrictMode);
        if (folder.isValid())
            choices.targetFolder = folder;
    }
    if (const auto text = readString(settings.value(SettingsKeys::defaultFormat))) {
        if (const auto format = AudioFormat::fromRawValue(*text))
            choices.format = *format;
    }
    if (const auto text = readString(settings.value(SettingsKeys::defaultQuality))) {
        if (const auto quality = AudioQuality::fromRawValue(*text))
            choices.quality = *quality;
    }
    if (const auto on = readBoolean(settings.value(SettingsKeys::embedArtwork)))
        choices.embedArtwork = *on;
    if (const auto on = readBoolean(settings.value(SettingsKeys::embedMetadata)))
        choices.embedMetadata = *on;
    if (const auto on = readBoolean(settings.value(SettingsKeys::squareCover)))
        choices.squareCover = *on;
    if (const auto on = readBoolean(settings.value(SettingsKeys::artistFromTitle)))
        choices.artistFromTitle = *on;
    if (const auto on = readBoolean(settings.value(SettingsKeys::splitChapters)))
        choices.splitChapters = *on;
    if (const auto on = readBoolean(settings.value(SettingsKeys::loudnessTags)))
        choices.loudnessTags = *on;
    if (const auto on = readBoolean(settings.value(SettingsKeys::paceLongBatches)))
        choices.paceLongBatches = *on;
    // Anything but a browser we offer would be handed to the tool as it stands.
    if (const auto text = readString(settings.value(SettingsKeys::cookiesFromBrowser));
        text && cookieBrowsers().contains(*text))
        choices.cookiesFromBrowser = *text;
    bool isNumber = false;
    const int rips = settings.value(SettingsKeys::simultaneousRips).toInt(&isNumber);
    if (isNumber && rips >= 1 && rips <= 4)
        choices.simultaneousRips = rips;
    if (const auto text = readString(settings.value(SettingsKeys::proxy));
        text && isUsableProxy(*text))
        choices.proxy = *text;
    const int limit = settings.value(SettingsKeys::speedLimitKBps).toInt(&isNumber);
    if (isNumber && limit >= 0 && limit <= kMaxSpeedLimitKBps)
        choices.speedLimitKBps = limit;
    return choices;
}

void save(QSettings& settings, const OutputChoices& choices)
{
    settings.setValue(SettingsKeys::targetFolder,
                      choices.targetFolder.toString(QUrl::FullyEncoded));
    settings.setValue(SettingsKeys::defaultFormat, choices.format.rawValue());
    settings.setValue(SettingsKeys::defaultQuality, choices.quality.rawValue());
    settings.setValue(SettingsKeys::embedArtwork, choices.embedArtwork);
    settings.setValue(SettingsKeys::embedMetadata, choices.embedMetadata);
    settings.setValue(SettingsKeys::squareCover, choices.squareCover);
    settings.setValue(SettingsKeys::artistFromTitle, choices.artistFromTitle);
    settings.setValue(SettingsKeys::splitChapters, choices.splitChapters);
    settings.setValue(SettingsKeys::loudnessTags, choices.loudnessTags);
    settings.setValue(SettingsKeys::paceLongBatches, choices.paceLongBatches);
    settings.setValue(SettingsKeys::cookiesFromBrowser, choices.cookiesFromBrowser);
    settings.setValue(SettingsKeys::simultaneousRips, choices.simultaneousRips);
    settings.setValue(SettingsKeys::proxy, choices.proxy);
    settings.setValue(SettingsKeys::speedLimitKBps, choices.speedLimitKBps);
    settings.sync();
}

} // namespace EnginePreferences
