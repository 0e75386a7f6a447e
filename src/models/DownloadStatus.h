// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QString>

// The status of the engine's one job and of each batch entry.
class DownloadStatus
{
public:
    enum class Kind
    {
        idle,
        downloading,
        converting,
        completed,
        failed
    };

    DownloadStatus() = default;

    static DownloadStatus idle() { return {}; }
    static DownloadStatus downloading(double progress, const QString& speed, const QString& eta,
                                      const QString& totalSize);
    static DownloadStatus converting(const QString& stage);
    static DownloadStatus completed(const QString& filePath);
    static DownloadStatus failed(const QString& error);

    Kind kind() const { return m_kind; }
    bool isBusy() const { return m_kind == Kind::downloading || m_kind == Kind::converting; }

    // Payloads; each is empty (or 0) for the cases that do not carry it.
    double progress() const { return m_progress; }
    const QString& speed() const { return m_speed; }
    const QString& eta() const { return m_eta; }
    const QString& totalSize() const { return m_totalSize; }
    const QString& stage() const { return m_text; }
    const QString& filePath() const { return m_text; }
    const QString& error() const { return m_text; }

    friend bool operator==(const DownloadStatus& a, const DownloadStatus& b);

private:
    Kind m_kind = Kind::idle;
    double m_progress = 0;
    QString m_speed;
    QString m_eta;
    QString m_totalSize;
    QString m_text; // stage, file path or error, by kind
};

Q_DECLARE_METATYPE(DownloadStatus)
