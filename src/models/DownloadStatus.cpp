// SPDX-License-Identifier: GPL-3.0-or-later
#include "DownloadStatus.h"

DownloadStatus DownloadStatus::downloading(double progress, const QString& speed,
                                           const QString& eta, const QString& totalSize)
{
    DownloadStatus s;
    s.m_kind = Kind::downloading;
    s.m_progress = progress;
    s.m_speed = speed;
    s.m_eta = eta;
    s.m_totalSize = totalSize;
    return s;
}

DownloadStatus DownloadStatus::converting(const QString& stage)
{
    DownloadStatus s;
    s.m_kind = Kind::converting;
    s.m_text = stage;
    return s;
}

DownloadStatus DownloadStatus::completed(const QString& filePath)
{
    DownloadStatus s;
    s.m_kind = Kind::completed;
    s.m_text = filePath;
    return s;
}

DownloadStatus DownloadStatus::failed(const QString& error)
{
    DownloadStatus s;
    s.m_kind = Kind::failed;
    s.m_text = error;
    return s;
}

bool operator==(const DownloadStatus& a, const DownloadStatus& b)
{
    if (a.m_kind != b.m_kind)
        return false;
    switch (a.m_kind) {
    case DownloadStatus::Kind::idle:
        return true;
    case DownloadStatus::Kind::downloading:
        return a.m_progress == b.m_progress && a.m_speed == b.m_speed && a.m_eta == b.m_eta &&
               a.m_totalSize == b.m_totalSize;
    case DownloadStatus::Kind::converting:
    case DownloadStatus::Kind::completed:
    case DownloadStatus::Kind::failed:
        return a.m_text == b.m_text;
    }
    return false;
}
