// TemplateTable: all templates and all operator records of one scene. A fresh table already holds the
// built-in templates and the operator dictionary, so it can be used before any setup file is read;
// the setup file adds templates and operators to it. Nodes, layouts and edit operations reach
// templates by name or entry key through it, and layouts get their operators from it.
#pragma once

#include <cstddef>
#include <memory>
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
class MathLayout;
class MathNode;
class MathTemplate;
struct MathIdentMapping;

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

    // Reads a setup file into the table: new templates and their layouts, adjustments of existing
    // ones. False when the file had any fault; what came before a fault (and every later element
    // that was sound) is kept, so a failed file still leaves a usable table. May be called again with
    // another file, which then comes on top.
    bool init(Kxt::KTstream &stream);

    // The setup reader's handlers, as the XML parser drives them. `attrs` alternates names and values;
    // `count` is the number of pointers, twice the number of attributes.
    void setup_start_element(char const *name, wchar const **attrs, std::size_t count);
    void setup_end_element(char const *name);
    // Appends text to what the open token element has collected; null is a fault.
    void setup_character_data(wchar const *text);
    // Whether text is being collected: only directly inside a token element.
    bool setup_need_character_data() const { return need_character_data_; }
    // Records a fault of the setup file. It stays until the next init.
    void parse_err() { parse_error_ = true; }
    bool setup_failed() const { return parse_error_; }
    // Layouts read but not yet given to a parent or a template.
    std::size_t setup_stack_size() const { return layout_stack_.size(); }

    // One attribute of an element: the value of the first attribute of exactly this name, or `def`
    // when there is none, which is a fault when `required`. The flag form reads "1", "true", "0" and
    // "false"; any other value is a fault and gives false.
    bool find_attr(wchar const *name, wchar const **attrs, std::size_t count, bool def, bool required);
    bool find_attr(wstring const &name, wchar const **attrs, std::size_t count, bool def, bool required);
    wstring find_attr(wchar const *name, wchar const **attrs, std::size_t count, wchar const *def, bool required);
    wstring find_attr(wstring const &name, wchar const **attrs, std::size_t count, wstring const &def,
                      bool required);

    // Numbers and identifiers from plain text.
    // A number with optional sign and exponent ("-1.5e-3" is the negated product of 1.5 and 10 to the
    // negated 3), or null when the text is not a number. The exponent needs the templates "times" and
    // "power"; without them a number with an exponent gives null.
    MathNode *number_from_string(wchar const *text);
    // A plain identifier: a letter, then letters and digits, blanks around; null otherwise.
    MathNode *ident_from_string(wchar const *text);
    // A copy of the expression behind a name made by generated_ident_name, or null.
    MathNode *decorated_ident(wchar const *name);
    // The made-up name ("-1", "-2", ...) of a node that stands for an identifier without being a plain
    // one (a subscripted or accented name); equal nodes share one name. Null for any other node. The
    // name lives as long as the table.
    char const *generated_ident_name(MathNode *node);
    // The mapping of a node equal to `node`, or null.
    MathIdentMapping *find_generated_ident(MathNode *node) const;
    // The number of the last name made.
    long generated_ident_count() const { return generated_ident_count_; }

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

    // The rules of the setup file's elements (setupgrammar.h).
    class SetupGrammar;

private:
    // The operator dictionary, then the built-in templates.
    void init_builtin_templates();
    // The first record of this text and form, or null.
    LayoutOp *find_operator(MathString const &text, LayoutOp::Form form) const;
    // Drops the setup reader's unfinished work: the open template, layouts without a parent and the
    // open rows. False when there was any.
    bool setup_cleanup();
    // The node of a template found by name, or null when there is no such template.
    MathNode *node_of(wchar const *type_name);

    MathEditScene *scene_;
    std::vector<MathTemplate *> templates_;  // counted; a slot may be null
    std::vector<LayoutOp *> operators_;      // counted; the built-in records first
    std::vector<MathIdentMapping *> ident_mappings_;  // owned
    long generated_ident_count_ = 0;

    // The setup reader's state while a file is read.
    MathTemplate *current_template_ = nullptr;   // the open content element's, counted
    std::vector<MathLayout *> layout_stack_;     // counted
    std::vector<std::size_t> row_start_stack_;   // where each open row or table starts on layout_stack_
    std::unique_ptr<wstring> character_data_;    // null until text arrives
    LayoutOp::Form mo_form_ = LayoutOp::infix;
    int mo_lbadness_ = 0;
    int mo_rbadness_ = 0;
    long mo_lspace_ = -1;  // the open mo's own spaces; -1 where the dictionary's stands
    long mo_rspace_ = -1;
    // The child range of the latest oprow, optable or oplists, for oper idx="*". It stays in force
    // after that element ends. Before any, all children.
    long idx_from_ = 0;
    long idx_to_ = -1;
    bool need_character_data_ = false;
    bool parse_error_ = false;

    bool map_decorated_idents_;
    bool underline_in_ident_as_subscript_;
};

}  // namespace Tavi
