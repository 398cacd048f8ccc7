// SPDX-License-Identifier: MIT
// How long it takes to spell, lay out and judge the text of a request before its alert can be drawn.
#pragma once

namespace veslora::bench {

class Report;

/// Usual texts, and one of 8 MB made to be slow. Throws when a usual text is not proven: that would measure
/// another way. A short one does it a few times.
void measureText(Report& report, bool isShort);

} // namespace veslora::bench
