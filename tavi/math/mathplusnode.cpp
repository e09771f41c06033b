// MathPlusNode: operands with signs that follow every change of the operand list.
#include "tavi/math/mathplusnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"
#include "tavi/kxt/xmltext.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "tavi/math/mathattriblist.h"

namespace Tavi {

namespace {

wchar toggled(wchar sign) { return sign == u'+' ? u'-' : sign == u'-' ? u'+' : sign; }

}  // namespace

MathPlusNode::MathPlusNode(MathTemplate *templ) : MathExprNode(templ) {}

MathPlusNode::MathPlusNode(MathPlusNode const &other, WithoutChildren without) : MathExprNode(other, without) {}

// A deep copy gets new operands, each signed plus on its way in; the original's signs then replace
// those.
Glyph *MathPlusNode::clone(bool deep) const
{
    if (!deep)
        return new MathPlusNode(*this);
    std::unique_ptr<MathPlusNode> copy(new MathPlusNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    copy->signs_ = signs_;
    return copy.release();
}

// Each list change runs first in the base, which checks the index; the signs change only after it
// succeeded.
void MathPlusNode::append(Glyph *glyph)
{
    std::size_t const at = static_cast<std::size_t>(count());
    MathExprNode::append(glyph);
    signs_.insert(std::min(at, signs_.size()), 1, u'+');
}

void MathPlusNode::prepend(Glyph *glyph)
{
    MathExprNode::prepend(glyph);
    signs_.insert(std::size_t(0), 1, u'+');
}

void MathPlusNode::insert(long index, Glyph *glyph)
{
    MathExprNode::insert(index, glyph);
    signs_.insert(std::min(static_cast<std::size_t>(index), signs_.size()), 1, u'+');
}

void MathPlusNode::remove(long index)
{
    MathExprNode::remove(index);
    if (static_cast<std::size_t>(index) < signs_.size())
        signs_.erase(static_cast<std::size_t>(index), 1);
}

bool MathPlusNode::plus_sign(std::size_t index) const { return index < signs_.size() && signs_[index] == u'+'; }

void MathPlusNode::toggle_sign(std::size_t index)
{
    if (index < signs_.size())
        signs_[index] = toggled(signs_[index]);
    modified();
}

void MathPlusNode::toggle_all_signs()
{
    for (wchar &s : signs_)
        s = toggled(s);
    modified();
}

bool MathPlusNode::is_negate() const { return signs_ == u"-"; }

bool MathPlusNode::is_minus() const { return signs_ == u"+-"; }

template <class Char>
void MathPlusNode::take_signs(Char const *value)
{
    if (value == nullptr)
        return;
    for (std::size_t i = 0; i < signs_.size() && value[i] != 0; ++i)
        if (value[i] == Char('+') || value[i] == Char('-'))
            signs_[i] = static_cast<wchar>(value[i]);
    modified();
}

void MathPlusNode::attribute(wchar const *key, wchar const *value)
{
    if (key != nullptr && std::u16string_view(key) == u"Signs")
        take_signs(value);
}

void MathPlusNode::attribute(char const *key, char const *value)
{
    if (key != nullptr && std::string_view(key) == "Signs")
        take_signs(value);
}

MathAttribList *MathPlusNode::attribute_list()
{
    std::unique_ptr<MathAttribList> list(new MathAttribList);
    list->push_back(u"Signs", signs_.c_str());
    return list.release();
}

bool MathPlusNode::is_equal(MathNode *other)
{
    if (!MathExprNode::is_equal(other))
        return false;
    MathPlusNode *sum = dynamic_cast<MathPlusNode *>(other);
    return sum != nullptr && sum->signs_ == signs_;
}

std::ostream &MathPlusNode::put_xml(std::ostream &out)
{
    out << "<plus sgn=\"" << signs() << '"';
    put_ipop(out, *this);
    out << '>';
    put_children(out, *this);
    return out << "</plus>";
}

}  // namespace Tavi
