// Helpers of the content format tests: documents in the format's namespace, the standard error
// stream caught while a document is read, and template tables with a built-in taken away or
// replaced by a plain template.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

#include "tavi/kxt/wchar.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templateaccelerator.h"
#include "tavi/math/templates/templatetable.h"

namespace TaviTest {

inline std::string const content_namespace = "http://www.tavi-math.org/xml/MathEditContent";

// A whole document around `body`.
inline std::string math_doc(std::string const &body)
{
    return "<math xmlns=\"" + content_namespace + "\">" + body + "</math>";
}

// Catches what goes to std::cerr while it lives.
class CaptureCerr
{
public:
    CaptureCerr() : old_(std::cerr.rdbuf(text_.rdbuf())) {}
    ~CaptureCerr() { std::cerr.rdbuf(old_); }
    CaptureCerr(CaptureCerr const &) = delete;
    CaptureCerr &operator=(CaptureCerr const &) = delete;
    std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf *old_;
};

// A template of plain expression nodes, as a setup file makes for a name with no class of its own.
inline Tavi::MathTemplate *plain_template(Tavi::TemplateTable *table, Tavi::wchar const *name)
{
    return new Tavi::MathTemplate(table, name, true, name, Tavi::TemplateAccelerator(), 2, true, 0, false, false,
                                  false, 0, 0, 1.0);
}

// How a test changes the built-in table before reading.
enum class Change { none, drop, plain };

inline void change_template(Tavi::TemplateTable &table, Change change, Tavi::wchar const *name)
{
    if (change == Change::none)
        return;
    std::size_t const index = table.find_template(name);
    table.replace_template(index, change == Change::drop ? nullptr : plain_template(&table, name));
}

}  // namespace TaviTest
