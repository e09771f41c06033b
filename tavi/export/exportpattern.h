// What the export writers share: the patterns of the setup file by which a template says how its
// nodes are written, the parentheses that the layouts put around a child, and the text of atoms.
//
// A pattern is literal text with slots for the node's children (docs/setup-export.md):
//   #1 ... #9    child 1 to 9 (one or more digits; counted from 1, as TeX counts its arguments)
//   #2.1         child 1 of child 2
//   #2*{sep}     children 2 to the last, with the text sep between each two ({sep} may be left out)
//   #R{row}{sep} a table node's rows, each written by the pattern row, in which #1 is the row's
//                first cell; sep between two rows
//   ##           a "#"
//   #|           between two alternatives: the first that fits the node is written
// A slot that names a single child the node does not have makes an alternative fail; when all fail,
// the writer falls back to its default form.
#pragma once

#include <string>

#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathNode;
class MathString;

// One export format's way of writing a child into a pattern.
class PatternWriter
{
public:
    virtual ~PatternWriter() = default;
    // Child `index` of `parent`, ready to stand in the pattern (in parentheses where they belong).
    virtual std::string child(MathNode *parent, long index) = 0;
    // Puts a piece of output behind what is written so far.
    virtual void append(std::string &out, std::string const &piece) { out += piece; }
};

// Writes `node` by the first alternative of `pattern` that fits onto `out`; false, with `out` as it
// was, when none does (a slot names a child that is not there, or a group is not closed).
bool expand_pattern(wstring const &pattern, MathNode *node, PatternWriter &writer, std::string &out);

// Whether the layout of the node's template shows child `index` in parentheses: its placeholder asks
// for a binding strength that the child's kind does not exceed, as on the screen.
bool child_in_parens(MathNode *parent, long index);

// The child at `index`, or null outside the node's children.
MathNode *child_at(MathNode *parent, long index);

// Text for XML character data and attribute values: & < > " escaped, in UTF-8.
std::string xml_text(wstring const &text);

// A text in Unicode: the linear text's characters, with the extension class's signs that it leaves
// as "&name;" (floors, ceilings, the overbar) as the characters they stand for.
wstring export_unicode(MathString const &text);

// An atom's text in Unicode, with a number's decimal separator turned back into a point.
wstring atom_unicode(MathNode *atom);

}  // namespace Tavi
