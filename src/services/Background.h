// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QThreadPool>
#include <utility>

// Runs work on pool, then done with its result on context's thread, always from that thread's
// event loop: never inside the caller, even when the work ends at once. The work starts only
// once done is attached. The returned future is the work's; whoever owns context waits for it
// before going.
template <typename Work, typename Done>
auto runInBackground(QThreadPool* pool, QObject* context, Work work, Done done)
{
    QPromise<void> gate;
    auto result = gate.future().then(pool, std::move(work));
    result.then(context, std::move(done));
    gate.start();
    gate.finish();
    return result;
}
