// Helpers of the setup reader tests: reading a setup text into a table, streams that fail or count
// their reads, and short descriptions of layout trees and node trees to compare whole.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tavi/kxt/stream.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {
class Glyph;
class MathNode;
class TemplateTable;
}  // namespace Tavi

namespace SetupTest {

// Reads `xml` as a whole setup file.
bool read_setup(Tavi::TemplateTable &table, std::string const &xml);
// `body` inside the root element.
std::string in_root(std::string const &body);

// Hands out its text in reads of at most `chunk` bytes; the read numbered `fail_at` (from 0) fails.
// Records the size asked for and the count given by each read.
class ScriptedStream : public Kxt::KTstream
{
public:
    ScriptedStream(std::string text, std::size_t chunk, long fail_at = -1);
    Status read(void *buffer, std::size_t size, std::size_t &count) override;
    Status write(void const *data, std::size_t size, std::size_t &count) override;

    std::vector<std::size_t> counts;  // what each read gave

private:
    std::string text_;
    std::size_t chunk_;
    long fail_at_;
    std::size_t position_ = 0;
};

// A layout tree as "class(child,child)", classes by their short names: "row", "oprow", "fixed",
// "running", "op", "displayop", "ident", "number", "text", "string", "frac", "under", "over",
// "underover", "sub", "sup", "root", "sqrt", "table", "lists"; "?" for any other.
std::string describe_layout(Tavi::Glyph *layout);
// A node tree as "type(child,child)"; an atom as "type:text", a sum with its signs as "plus[+-](...)".
std::string describe_node(Tavi::MathNode *node);

// Drops a node that nothing holds.
void discard(Tavi::MathNode *node);

std::string narrow(Tavi::wstring const &text);

}  // namespace SetupTest
