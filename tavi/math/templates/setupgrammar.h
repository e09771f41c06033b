// The setup file's element rules, shared by the reader (setupreader.cpp: the document, content,
// changecontent and layout elements) and the layout expressions (setuplayouts.cpp). Each element
// has a start and an end rule; the rules work on the reader state kept in the TemplateTable, which
// this class opens to them. Internal to the setup reader.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "tavi/kxt/wchar.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

class MathLayout;
class MathTemplate;

class TemplateTable::SetupGrammar
{
public:
    // The attributes of the element at hand and the lookups on them.
    struct Element
    {
        TemplateTable &table;
        wchar const **attrs;
        std::size_t count;

        wstring text(wchar const *name, wchar const *def, bool required = false) const
        {
            return table.find_attr(name, attrs, count, def, required);
        }
        bool flag(wchar const *name, bool def) const { return table.find_attr(name, attrs, count, def, false); }
    };

    using StartRule = void (*)(Element const &element);
    using EndRule = void (*)(TemplateTable &table);
    struct Rule
    {
        char const *name;
        StartRule start;  // null: nothing at the start tag
        EndRule end;      // null: nothing at the end tag
    };

    // The rule of an element name (compared as bytes), or null for an unknown element.
    static Rule const *document_rule(char const *name);
    static Rule const *layout_rule(char const *name);

    // The reader state.
    static MathTemplate *&current_template(TemplateTable &t) { return t.current_template_; }
    static std::vector<std::size_t> &row_starts(TemplateTable &t) { return t.row_start_stack_; }
    static std::unique_ptr<wstring> &character_data(TemplateTable &t) { return t.character_data_; }
    static LayoutOp::Form &mo_form(TemplateTable &t) { return t.mo_form_; }
    static int &mo_lbadness(TemplateTable &t) { return t.mo_lbadness_; }
    static int &mo_rbadness(TemplateTable &t) { return t.mo_rbadness_; }
    static long &mo_lspace(TemplateTable &t) { return t.mo_lspace_; }
    static long &mo_rspace(TemplateTable &t) { return t.mo_rspace_; }
    static long &idx_from(TemplateTable &t) { return t.idx_from_; }
    static long &idx_to(TemplateTable &t) { return t.idx_to_; }
    static bool &need_character_data(TemplateTable &t) { return t.need_character_data_; }

    // The layout stack. Each entry holds one reference.
    static std::vector<MathLayout *> &stack(TemplateTable &t) { return t.layout_stack_; }
    // Pushes a new layout, taking a reference on it.
    static void push(TemplateTable &t, MathLayout *layout);
    // Takes the top entry off; the caller gets the stack's reference.
    static MathLayout *pop(TemplateTable &t);
    // Gives back the stack's reference on a layout that was popped.
    static void release(MathLayout *layout);
    // Drops the open template, if any.
    static void drop_current_template(TemplateTable &t);
};

}  // namespace Tavi
