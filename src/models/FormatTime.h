// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// A playback time as "m:ss": whole seconds, truncated; the minutes grow without an hours field
// (3725 s is "62:05"). A time that is not finite, or negative, reads "0:00".
QString formatTime(double seconds);
