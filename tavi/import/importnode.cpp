// The import tree written as a document of the math edit content format.
#include "tavi/import/importnode.h"

#include "tavi/interchange/matheditcontenthandler.h"

namespace Tavi {

namespace {

char const *element_name(ImportNode::Kind kind)
{
    static char const *const names[] = {"ident", "num", "str", "plh", "expr", "plus",
                                        "isub",  "isup", "isubsup", "irow", "iacc", "tab"};
    return names[static_cast<int>(kind)];
}

void escape(std::string &out, std::string const &text)
{
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += c;
        }
    }
}

void attribute(std::string &out, char const *name, std::string const &value)
{
    out += ' ';
    out += name;
    out += "=\"";
    escape(out, value);
    out += '"';
}

void write(std::string &out, ImportNode const &node)
{
    using Kind = ImportNode::Kind;
    char const *element = element_name(node.kind);
    out += '<';
    out += element;
    switch (node.kind) {
    case Kind::expr: attribute(out, "tmp", node.name); break;
    case Kind::plus: attribute(out, "sgn", node.sgn); break;
    case Kind::iacc: attribute(out, "nm", node.name); break;
    case Kind::tab:
        attribute(out, "tmp", node.name);
        if (node.rows)
            attribute(out, "rows", std::to_string(node.rows));
        if (node.cols)
            attribute(out, "cols", std::to_string(node.cols));
        if (!node.rowl.empty())
            attribute(out, "rowl", node.rowl);
        if (!node.coll.empty())
            attribute(out, "coll", node.coll);
        if (!node.frl.empty())
            attribute(out, "frl", node.frl);
        break;
    default: break;
    }
    if (node.kind == Kind::plh) {
        out += " />";
        return;
    }
    out += '>';
    out += node.text;
    for (auto const &kid : node.kids)
        write(out, *kid);
    out += "</";
    out += element;
    out += '>';
}

}  // namespace

ImportNodePtr ImportNode::make(Kind kind, std::string name)
{
    auto node = std::make_unique<ImportNode>();
    node->kind = kind;
    node->name = std::move(name);
    return node;
}

ImportNodePtr ImportNode::expr(std::string const &name, std::vector<ImportNodePtr> kids)
{
    auto node = make(Kind::expr, name);
    node->kids = std::move(kids);
    return node;
}

ImportNodePtr ImportNode::placeholder()
{
    return make(Kind::plh);
}

void ImportNode::add_text(std::string const &utf8)
{
    escape(text, utf8);
    plain += utf8;
}

void ImportNode::add_char(std::string const &name)
{
    text += "<chr nm=\"" + name + "\"/>";
    plain += "&" + name + ";";
}

std::string write_content_document(ImportNode const &node)
{
    std::string out = "<math xmlns=\"";
    out += MathEditContentHandler::nameSpace();
    out += "\">";
    write(out, node);
    out += "</math>";
    return out;
}

}  // namespace Tavi
