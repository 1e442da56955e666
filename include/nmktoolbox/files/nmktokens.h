// nmktokens: the parts of a text between delimiters.
#pragma once

#include <nmktoolbox/export.h>

#include <ncamcontainer/builtin_containers.h>
#include <utils/utString.h>

/// Appends the tokens of the text to the list and returns how many.
///
/// Each UTF-16 code unit of `delimiters` separates; several in a row separate once. A token that
/// begins with a single or double quote mark continues over delimiters until one is right behind
/// the same mark, or to the end of the text; both marks are left out. A mark that is the first
/// character of its own token doesn't close it before a delimiter. Ill-formed parts come through as
/// they are.
///
/// Deliberate: delimiters at the end of the text, even alone, are followed by one empty token.
/// The empty text and the null string have none.
NMKTOOLBOX_EXPORT int nmktokens(utString text, utString delimiters, utStringcoDList& list);
