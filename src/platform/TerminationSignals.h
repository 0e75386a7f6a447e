// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGTERM, SIGINT and SIGHUP into a signal on the event loop, so a logout, a closed
// terminal or a kill ends the program the way its own quit does: tools ended, scratch folders
// removed. One per process.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    // Puts the default handlers back.
    ~TerminationSignals() override;

signals:
    // Once per signal received.
    void received(int signalNumber);

private:
    QSocketNotifier* m_notifier = nullptr;
};
