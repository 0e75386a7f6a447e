// SPDX-License-Identifier: GPL-3.0-or-later
#include "TerminationSignals.h"

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};
int g_pipe[2] = {-1, -1};

void onSignal(int signalNumber)
{
    // Only async-signal-safe work here; the event loop does the rest.
    const char byte = static_cast<char>(signalNumber);
    [[maybe_unused]] const ssize_t written = ::write(g_pipe[1], &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent)
{
    if (g_pipe[0] >= 0 || ::pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(g_pipe[0], &byte, 1) == 1)
            emit received(static_cast<unsigned char>(byte));
    });
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int signalNumber : kSignals)
        ::sigaction(signalNumber, &action, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    for (const int signalNumber : kSignals)
        ::signal(signalNumber, SIG_DFL);
    delete m_notifier;
    ::close(g_pipe[0]);
    ::close(g_pipe[1]);
    g_pipe[0] = g_pipe[1] = -1;
}
