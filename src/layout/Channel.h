#pragma once

#include <vector>

namespace brisel::layout {

/// A line's way through the channel between two rows, from a place at its upper border to one at
/// its lower border. Wires of one trunk have the same top and share their horizontal piece.
struct Wire {
  double top;
  double bottom;
  int trunk = -1;  ///< the same number for the wires of one trunk; -1: alone
};

/// The horizontal pieces of the wires of one channel.
struct Tracks {
  int count = 0;                ///< tracks are numbered from the top
  std::vector<int> track;       ///< of each wire; -1: it is straight
  std::vector<double> detour;   ///< of each wire where it leaves its track, usually its bottom
  std::vector<int> lowerTrack;  ///< of a wire whose detour is not its bottom, the track from there
                                ///< to the bottom; -1: none
};

/// Assigns tracks so that no two horizontal pieces on one track touch, and no vertical ones lie on
/// each other: those that would come nearer than "apart" at different borders are ordered so that
/// they end before they meet, or get a detour.
/// Post: two wires that are alone cross only when their ends are in another order below than above,
/// and then once, except where a detour was needed or a circle of such wishes had to be broken.
/// Wires that go right are ordered by their tops from the right, those that go left from the left,
/// which is free of superfluous crossings; cf. Eiglsperger, Kaufmann, Siebenhaller: A topology-
/// shape-metrics approach for the automatic layout of UML class diagrams, 2003, for the setting.
[[nodiscard]] Tracks assignTracks(const std::vector<Wire>& wires, double apart);

}  // namespace brisel::layout
