#pragma once

#include <QIcon>
#include <functional>

// An icon whose pixmaps are made the first time something draws or measures it, so a window
// can be built without rendering icons it may never show. It then answers exactly as the icon
// the factory returns would.
namespace DeferredIcon {

// knownNotNull lets isNull() answer without building the icon, for factories that always
// give one.
QIcon make(std::function<QIcon()> factory, bool knownNotNull = false);

} // namespace DeferredIcon
