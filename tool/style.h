// Colours for people; nothing where the output is no terminal.
#ifndef K5AX_TOOL_STYLE_H
#define K5AX_TOOL_STYLE_H

#include "tool/context.h"

#include <string>

namespace tool {

enum class Style { heading, good, bad, doubtful, name };

/// The text in the style, or the text alone where `context.colour` is off.
inline std::string styled(const Context& context, Style style, const std::string& text) {
  if (!context.colour) return text;
  const char* code = "1";  // heading: bold
  if (style == Style::good) code = "32";
  if (style == Style::bad) code = "31";
  if (style == Style::doubtful) code = "33";
  if (style == Style::name) code = "36";
  return "\x1b[" + std::string(code) + "m" + text + "\x1b[0m";
}

}  // namespace tool

#endif
