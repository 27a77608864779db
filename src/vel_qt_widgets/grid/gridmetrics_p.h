#ifndef VEL_QT_WIDGETS_GRIDMETRICS_P_H
#define VEL_QT_WIDGETS_GRIDMETRICS_P_H

namespace vel {

// Sizes the grid's layout fixes rather than the style.

// The column left of the body: the resize button above the row numbers and,
// under them, the labels of the statistics rows, all at most this wide.
constexpr int rowNumberColumnWidth = 50;
// The resize button's height before the body's header is measured; it
// takes the header's height from then on.
constexpr int resizeButtonInitialHeight = 10;
// The body's horizontal scroll bar is hidden (the statistics table scrolls
// both); kept this low so that it never takes room from the rows.
constexpr int hiddenScrollBarHeight = 1;
// Row-number and statistics sections follow the body's row height, which
// may be lower than the style's minimum header section.
constexpr int rowSectionMinimumSize = 1;

} // namespace vel

#endif // VEL_QT_WIDGETS_GRIDMETRICS_P_H
