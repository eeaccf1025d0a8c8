#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "analysis/graph_labels.h"
#include "base/drawing.h"
#include "core/modcv.h"

namespace corvane {

// Fills XProfile and YProfile with the gray levels of DisplayBits along the row and the column through the
// marker: 49 pixels before it and 50 after it to the right, 50 rows below it and 49 above, cut at the edges.
// XProfile runs to the right, YProfile downwards from the highest row.
void Profile(ModCV& cv);

// The two graphs: x from 0 to 200, two units to a position; y the gray level. Black bars, then red lines
// along y = 0 for positions outside the picture.
std::vector<Stroke> RowProfileGraph(std::span<const std::int32_t> levels, int markX);
// Runs from right to left; `rowsAbove` is the number of picture rows above the marker.
std::vector<Stroke> ColumnProfileGraph(std::span<const std::int32_t> levels, int rowsAbove);
// The grid of either graph.
std::vector<Stroke> ProfileGrid();

// Axis labels beside and under a graph.
std::vector<Label> RowProfileLabels(const GraphFrame& frame);
std::vector<Label> ColumnProfileLabels(const GraphFrame& frame);

// A graph in a sentence: where it runs, its lowest and highest level, the level at the marker. Rows and
// columns count from 1, as in the read-out.
std::string DescribeRowProfile(const ModCV& cv);
std::string DescribeColumnProfile(const ModCV& cv);

}  // namespace corvane
