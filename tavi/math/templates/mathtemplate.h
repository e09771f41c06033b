// MathTemplate: the description shared by all nodes of one kind: its name, operand count, entry key,
// editing behaviour and layouts. A node holds its operands and hands every layout, drawing, picking
// and caret question to its template, which asks its layout. A template may hold two layouts: the one
// in force and a linear fallback used when wrapping lines and the formula does not fit.
#pragma once

#include <cstddef>

#include "tavi/geometry/point.h"
#include "tavi/glyph/input.h"
#include "tavi/kxt/resource.h"
#include "tavi/kxt/wchar.h"
#include "tavi/math/templates/templateaccelerator.h"

namespace Tavi {

class AllocationTree;
class BoxTree;
class LayoutTable;
class MathLayout;
class MathNode;
class MathNodeContext;
class MathSelection;
class MathString;
class TemplateTable;

class MathTemplate : public Kxt::RefCounted<Kxt::IResource>
{
public:
    // What may happen to a child of a node when the user deletes it.
    enum DeleteOp {
        delete_none = 0,     // it cannot be removed, only turned into a placeholder
        delete_child = 1,    // it is removed and the parent stays
        delete_flatten = 2   // it is removed and the parent collapses
    };

    // Binding strength of a kind that never needs parentheses.
    static constexpr double no_parens_priority = 2147483647.0;

    // A template of `arity` operands (the least count when varying_arity is set) whose freshly
    // entered nodes get `dummies` placeholders; a template of no fixed operands with varying arity
    // gets at least one. flatten_seq with the child range from..to (negative counts from the end)
    // says which children flatten_sequence reports. No layout yet: see layout(MathLayout *).
    MathTemplate(TemplateTable *table, wchar const *type_name, bool can_enter, wchar const *keyword,
                 TemplateAccelerator const &accelerator, std::size_t arity, bool varying_arity,
                 std::size_t dummies, bool associative, bool flatten_last, bool flatten_seq, long from,
                 long to, double priority);
    MathTemplate(MathTemplate const &) = delete;
    MathTemplate &operator=(MathTemplate const &) = delete;
    // Releases the layout in force. The linear layout is deliberately not released: the first layout
    // given to a template outlives it.
    ~MathTemplate() override;

    // Node creation. A plain template makes expression nodes (table nodes when its layout is a table)
    // and nothing from text.
    virtual MathNode *create_node(wchar const *text);
    virtual MathNode *create_node();
    virtual MathNode *create_cat_node(wchar const *text);
    virtual MathNode *create_edit_node(MathString const &text);
    // The node a user gets on entering the template, with its placeholders; null when it can't be made.
    virtual MathNode *create_edit_node();
    virtual MathNode *create_tabular_edit_node(std::size_t rows, std::size_t cols);
    // Whether the node may be the argument of an overlay; any node here.
    virtual bool valid_overlay_arg(MathNode *node);

    // The glyph protocol on behalf of the context's math node. Each call after request goes to the
    // linear layout when the box tree at hand was made by it, and to the layout in force otherwise.
    virtual BoxTree *request(MathNodeContext &context, BoxTree const &constraint);
    virtual AllocationTree *allocate(long index, MathNodeContext &context, AllocationTree const &allocation);
    virtual void draw(MathNodeContext &context, AllocationTree const &allocation);
    virtual bool is_allocated();
    virtual void invalidate_allocation();
    virtual void change(long index);
    virtual bool pick(long index, MathSelection *selection, MathNodeContext &context,
                      AllocationTree const &allocation, Point point);
    virtual long caret_pos(MathNodeContext &context, AllocationTree const &allocation, Point point);
    virtual AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                               MathNodeContext &context, AllocationTree const &allocation);
    virtual bool get_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result);
    virtual DeleteOp delete_child_op(MathNode const *node, std::size_t child);
    // The operator shown before child `index`, for templates that draw operators of their own; none here.
    virtual BoxTree *request_operator(long index, MathNodeContext &context, BoxTree const &constraint);
    virtual void draw_operator(long index, MathNodeContext &context, AllocationTree const &allocation);

    // Installs a layout (taking a reference). The first of two layouts becomes the linear one and the
    // second the one in force; any further layout replaces the one in force only.
    void layout(MathLayout *layout);
    MathLayout *layout() const { return layout_; }
    MathLayout *linear_layout() const { return linear_layout_; }
    bool has_linear_layout() const { return linear_layout_ != nullptr; }
    // The table layout that the layout in force had when it was installed, or null.
    LayoutTable *table_layout() const { return table_layout_; }

    TemplateTable *table() const { return table_; }
    // Valid as long as the template, and until the keyword is set again.
    wchar const *type_name() const { return type_name_.c_str(); }
    wchar const *keyword() const { return keyword_.c_str(); }
    // A null text empties the keyword.
    void keyword(wchar const *keyword);
    void keyword(wstring const &keyword);

    TemplateAccelerator const &accelerator() const { return accelerator_; }
    void accelerator(TemplateAccelerator const &accelerator) { accelerator_ = accelerator; }
    double priority() const { return priority_; }
    // A new priority changes where parentheses go: boxes kept for nodes no longer hold.
    void priority(double priority);
    bool can_enter() const { return can_enter_; }
    void can_enter(bool on) { can_enter_ = on; }

    std::size_t arity() const { return arity_; }
    std::size_t dummies() const { return dummies_; }
    bool varying_arity() const { return varying_arity_; }
    bool associative() const { return associative_; }
    bool flatten_last() const { return flatten_last_; }

    // How nodes of this kind are written when a formula is exported: a pattern per format from the
    // setup file (docs/setup-export.md), empty where the setup file gives none.
    enum ExportFormat { export_latex = 0, export_mathml = 1, export_cmml = 2, export_format_count = 3 };
    wstring const &export_pattern(ExportFormat format) const { return export_patterns_[format]; }
    void export_pattern(ExportFormat format, wstring const &pattern) { export_patterns_[format] = pattern; }

    // The template of comma-separated sequences.
    bool is_sequence() const;
    // Whether the child `child` of the context's node needs parentheses in a position that demands
    // the binding strength `prio`: true when prio is at least the child's template priority.
    bool set_parens(MathNodeContext &context, double prio, long child) const;
    // Whether child `i` of the node lies in the flatten range (resolved against its child count).
    bool flatten_sequence(MathNode const *node, long i) const;

private:
    // The layout that made the box tree: the linear one when its flag says so.
    MathLayout *layout_for(BoxTree const *box) const;

    TemplateTable *table_;
    MathLayout *layout_;
    MathLayout *linear_layout_;
    LayoutTable *table_layout_;
    wstring type_name_;
    wstring keyword_;
    wstring export_patterns_[export_format_count];
    TemplateAccelerator accelerator_;
    double priority_;
    std::size_t arity_;
    std::size_t dummies_;
    long flatten_seq_from_;
    long flatten_seq_to_;
    bool can_enter_;
    bool varying_arity_;
    bool associative_;
    bool flatten_last_;
    bool flatten_seq_;
};

}  // namespace Tavi
