// A node of the trees in words.
#ifndef K5AX_TOOL_NODE_TEXT_H
#define K5AX_TOOL_NODE_TEXT_H

#include "tool/scene_nodes.h"

#include <string>

#include <k5ax/machdef.h>

namespace tool {

/// "frame", "fixed", "plain", "axis" or "tool": what the node is, for programs too. A plain node is a frame
/// where its transform is the identity, and fixed where its id says so.
std::string node_kind(const SceneNode& entry);

/// The head of its line: "frame", "fixed", "C axis", "tool".
std::string node_name(const SceneNode& entry);

/// What its flags and its role say: "secondary, driven", "driven, wins", "not driven, flags 0x40"; empty for
/// a plain node without flags.
std::string node_words(md::CMachDef& machine, const SceneNode& entry);

/// A transform in words: "shift 0 0 -85", "turn 30 deg about 0 0 1, shift 1 2 3", or twelve numbers where it
/// is no turn and shift. Empty for the identity.
std::string transform_words(const Geometry::Matrix& matrix, int digits);

}  // namespace tool

#endif
