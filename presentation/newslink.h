#pragma once
// The news line of a skin: the stories in the section "News" of the Weather cache
// ("Count", "LastDisplayed", "Story<n>" = "<address>|<title>"), shown one at a time in
// the element TB-NewsStoryLink as a link that hands its address back through TB-Link.

#include <QString>

namespace Tarnby
{

// Moves the pointer LastDisplayed one story on (past the last back to the first) or
// back (before the first to the last); a list without a pointer starts at the first.
// Does nothing without stories.
void StepNewsPointer(int step);

// The link of the story under the pointer, empty without stories. The title is cut to
// 44 characters ("..." behind the first 41). A story whose address is a number is the
// vendor service's: its text is what stands behind ":" in the title, and its address
// is made from the number.
QString NewsStoryLinkHtml();

} // namespace Tarnby
