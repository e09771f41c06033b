// MathAccentNode: its one operand, cloning and the text.
#include "tavi/math/mathaccentnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"
#include "tavi/kxt/xmltext.h"

#include <memory>
#include <string_view>

#include "tavi/math/mathscriptnode.h"
#include "tavi/math/templates/accenttemplate.h"

namespace Tavi {

MathAccentNode::MathAccentNode(MathTemplate *templ) : MathExprNode(templ) {}

MathAccentNode::MathAccentNode(MathAccentNode const &other, WithoutChildren without) : MathExprNode(other, without) {}

Glyph *MathAccentNode::clone(bool deep) const
{
    if (!deep)
        return new MathAccentNode(*this);
    std::unique_ptr<MathAccentNode> copy(new MathAccentNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    return copy.release();
}

long MathAccentNode::cat_type() const { return 20; }

unsigned long MathAccentNode::cat_childs() const { return 0; }

bool MathAccentNode::may_replace(long index, MathNode *node)
{
    return index == 0 && MathScriptNode::is_identifier_like(node, false);
}

Kxt::FixedString MathAccentNode::cat_text() { return Kxt::FixedString(child_text(0) + accent_text()); }

// The accent's name is its template's text ("&OverBar;"); a node on another kind of template falls back
// to a name made from the template's type ("overbar_accent" gives "&overbar;").
wstring MathAccentNode::accent_text() const
{
    if (auto const *accent = dynamic_cast<AccentTemplate const *>(templ()))
        return accent->cat_text();
    std::u16string_view name(type_name());
    std::u16string_view const suffix = u"_accent";
    if (name.size() > suffix.size() && name.substr(name.size() - suffix.size()) == suffix)
        name.remove_suffix(suffix.size());
    return u"&" + wstring(name) + u";";
}

std::ostream &MathAccentNode::put_xml(std::ostream &out)
{
    // The accent's text is its entity form ("&OverBar;"): the name is what lies between the two
    // ends, of which no more than 64 characters are looked at.
    wstring const form = accent_text().substr(0, 64);
    wstring const name = form.size() > 2 ? form.substr(1, form.size() - 2) : wstring();
    out << "<iacc nm=\"" << name.c_str() << '"';
    put_ipop(out, *this);
    out << '>';
    put_children(out, *this);
    return out << "</iacc>";
}

}  // namespace Tavi
