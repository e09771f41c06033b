// TemplateTable: all templates and all operator records of one scene. A fresh table already holds the
// built-in templates and the operator dictionary, so it can be used before any setup file is read;
// the setup file adds templates and operators to it. Nodes, layouts and edit operations reach
// templates by name or entry key through it, and layouts get their operators from it.
#pragma once

#include <cstddef>
#include <vector>

#include "tavi/kxt/wchar.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/templates/mathoverlaytemplateinfo.h"
#include "tavi/math/templates/templateaccelerator.h"

namespace Kxt {
class KTstream;
}

namespace Tavi {

class MathEditScene;
class MathTemplate;

class TemplateTable
{
public:
    // Filled with the built-in operators and templates; both identifier switches on.
    explicit TemplateTable(MathEditScene *scene);
    TemplateTable(TemplateTable const &) = delete;
    TemplateTable &operator=(TemplateTable const &) = delete;
    // Gives back the table's reference on every template and operator record.
    ~TemplateTable();

    MathEditScene *scene() const { return scene_; }

    // The first template of exactly this type name, or null.
    MathTemplate *get_template(wchar const *name) const;
    // The first template entered by exactly this key (key and modifiers), or null; a void key finds
    // nothing.
    MathTemplate *get_template(TemplateAccelerator const &accel) const;
    // The placeholder template, which is always there.
    MathTemplate *get_dummy_template() const;

    // A private copy of the operator record for the text in the asked form. Failing that, the record
    // of another form, tried in the order infix, prefix, postfix; the copy keeps the form of the
    // record it was made from. An unknown text gets a plain record of the asked form, kept in the
    // table from then on. A badness that is not 0 is set on the copy only. The caller owns the copy.
    LayoutOp *get_layout_op(wchar const *text, LayoutOp::Form form, int lbadness, int rbadness);

    // The host's walk over all templates, built-in ones included. A position of null ends the walk.
    TemplatePosition *get_first_template_info_position() const;
    // Fills `info` from the template at `position` and moves on to the next template (or null). A
    // null or stale position leaves `info` alone and ends the walk.
    void get_next_template_info(MathOverlayTemplateInfo &info, TemplatePosition *&position) const;

    // Asks the scene for the size of a new table whose template has this keyword. The scene class
    // that answers it is the host's; without one there is no answer.
    bool query_array_dimensions(std::size_t &rows, std::size_t &cols, wchar const *keyword);

    // Switches of identifier construction.
    bool map_decorated_idents() const { return map_decorated_idents_; }
    void map_decorated_idents(bool on) { map_decorated_idents_ = on; }
    bool underline_in_ident_as_subscript() const { return underline_in_ident_as_subscript_; }
    void underline_in_ident_as_subscript(bool on) { underline_in_ident_as_subscript_ = on; }

    // Reads a setup file into the table. Not yet able to read one: it answers false and leaves the
    // table as it is.
    bool init(Kxt::KTstream &stream);

    // Access for the setup reader and for hosts.
    // Appends a template, taking one reference on it.
    void add_template(MathTemplate *templ);
    // Puts a template in the slot `index` (taking a reference) and drops the table's reference on the
    // one that stood there. False, and nothing taken, for an index out of range.
    bool replace_template(std::size_t index, MathTemplate *templ);
    // The slot of the first template of this type name, or npos.
    std::size_t find_template(wchar const *name) const;
    std::size_t template_count() const { return templates_.size(); }
    // The template in a slot; null for an empty slot or an index out of range.
    MathTemplate *template_at(std::size_t index) const;

    // Appends an operator record, taking one reference on it; lookups find it from then on.
    void add_operator(LayoutOp *op);
    std::size_t operator_count() const { return operators_.size(); }
    LayoutOp *operator_at(std::size_t index) const;

    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

private:
    // The operator dictionary, then the built-in templates.
    void init_builtin_templates();
    // The first record of this text and form, or null.
    LayoutOp *find_operator(MathString const &text, LayoutOp::Form form) const;

    MathEditScene *scene_;
    std::vector<MathTemplate *> templates_;  // counted; a slot may be null
    std::vector<LayoutOp *> operators_;      // counted; the built-in records first
    bool map_decorated_idents_;
    bool underline_in_ident_as_subscript_;
};

}  // namespace Tavi
