// Helpers of the setup reader tests.
#include "setup_support.h"

#include <cstring>
#include <map>
#include <typeindex>
#include <typeinfo>

#include "tavi/kxt/utf.h"
#include "tavi/math/layout/layoutdisplayop.h"
#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutfraction.h"
#include "tavi/math/layout/layoutident.h"
#include "tavi/math/layout/layoutlists.h"
#include "tavi/math/layout/layoutnumber.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutroot.h"
#include "tavi/math/layout/layoutrow.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layoutsqrt.h"
#include "tavi/math/layout/layoutstring.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/layout/layouttext.h"
#include "tavi/math/layout/layoutunder.h"
#include "tavi/math/layout/layoutunderover.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/templates/templatetable.h"

namespace SetupTest {

using namespace Tavi;

bool read_setup(TemplateTable &table, std::string const &xml)
{
    KTmemoryStream stream(xml.data(), xml.size());
    return table.init(stream);
}

std::string in_root(std::string const &body) { return "<mathsetup>" + body + "</mathsetup>"; }

ScriptedStream::ScriptedStream(std::string text, std::size_t chunk, long fail_at)
    : text_(std::move(text)), chunk_(chunk), fail_at_(fail_at)
{
}

Kxt::KTstream::Status ScriptedStream::read(void *buffer, std::size_t size, std::size_t &count)
{
    count = 0;
    if (fail_at_ == static_cast<long>(counts.size())) {
        counts.push_back(0);
        return Failed;
    }
    std::size_t n = text_.size() - position_;
    if (n > size)
        n = size;
    if (n > chunk_)
        n = chunk_;
    std::memcpy(buffer, text_.data() + position_, n);
    position_ += n;
    count = n;
    counts.push_back(n);
    return Ok;
}

Kxt::KTstream::Status ScriptedStream::write(void const *, std::size_t, std::size_t &count)
{
    count = 0;
    return ReadOnly;
}

std::string narrow(wstring const &text) { return Kxt::to_string(text); }

std::string describe_layout(Glyph *layout)
{
    static std::map<std::type_index, char const *> const names = {
        {typeid(LayoutRow), "row"},           {typeid(LayoutOperatorRow), "oprow"},
        {typeid(LayoutFixedPlaceholder), "fixed"}, {typeid(LayoutRunningPlaceholder), "running"},
        {typeid(LayoutOp), "op"},             {typeid(LayoutDisplayOp), "displayop"},
        {typeid(LayoutIdent), "ident"},       {typeid(LayoutNumber), "number"},
        {typeid(LayoutText), "text"},         {typeid(LayoutString), "string"},
        {typeid(LayoutFraction), "frac"},     {typeid(LayoutUnder), "under"},
        {typeid(LayoutOver), "over"},         {typeid(LayoutUnderOver), "underover"},
        {typeid(LayoutSub), "sub"},           {typeid(LayoutSup), "sup"},
        {typeid(LayoutSubSup), "subsup"},
        {typeid(LayoutRoot), "root"},         {typeid(LayoutSqrt), "sqrt"},
        {typeid(LayoutTable), "table"},       {typeid(LayoutLists), "lists"},
    };
    if (layout == nullptr)
        return "null";
    auto const found = names.find(typeid(*layout));
    std::string out = found != names.end() ? found->second : "?";
    long const n = layout->count();
    if (n > 0) {
        out += "(";
        for (long i = 0; i < n; ++i)
            out += (i ? "," : "") + describe_layout(layout->component(i));
        out += ")";
    }
    return out;
}

std::string describe_node(MathNode *node)
{
    if (node == nullptr)
        return "null";
    std::string out = narrow(node->type_name());
    if (auto *plus = dynamic_cast<MathPlusNode *>(node))
        out += "[" + narrow(plus->signs()) + "]";
    long const n = node->count();
    if (n == 0 && !node->text().empty())
        return out + ":" + narrow(node->text().chars());
    if (n > 0) {
        out += "(";
        for (long i = 0; i < n; ++i)
            out += (i ? "," : "") + describe_node(node->child(static_cast<int>(i)));
        out += ")";
    }
    return out;
}

void discard(MathNode *node)
{
    if (node) {
        node->ref();
        node->unref();
    }
}

}  // namespace SetupTest
