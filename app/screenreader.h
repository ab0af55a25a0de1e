#pragma once

namespace Tarnby
{

// True when the desktop's accessibility bus reports a running screen reader
// (org.a11y.Status.ScreenReaderEnabled). No session bus or no answer: false.
bool ScreenReaderActive();

} // namespace Tarnby
