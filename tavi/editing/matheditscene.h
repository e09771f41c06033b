// MathEditScene: the scene of editable formulas. It adds what all formulas of a scene share, their
// template table and their style, and a call surface for a host's menus and toolbars. It holds no
// editing logic: each do_ and can_ call builds a command and runs it down the scene's own chain, so
// that the focused MathSelection does the work or answers whether it can.
//
// The class is abstract. A host's scene supplies the root glyph and the selection (create_selection),
// and query_array_dimensions, which asks the user for the size of a new table. FormulaScene is a
// ready one.
#pragma once

#include <cstddef>

#include "tavi/editing/matheditop.h"
#include "tavi/glyph/editglyphscene.h"
#include "tavi/kxt/wchar.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstyle.h"
#include "tavi/math/templates/mathoverlaytemplateinfo.h"
#include "tavi/math/templates/templatetable.h"

namespace Kxt {
class Operation;
}

namespace Tavi {

class MathEditScene : public EditGlyphScene, public MathStyleSource
{
public:
    // A scene with the built-in templates; a setup file is read afterwards with
    // template_table()->init(stream).
    MathEditScene();
    ~MathEditScene() override;

    virtual TemplateTable *template_table();
    MathStyle *math_style() override;

    virtual bool do_insert_overlay(wchar const *name);
    virtual bool do_insert_tabular_overlay(wchar const *name, std::size_t rows, std::size_t columns);
    virtual bool do_insert_symbol_overlay(wchar const *name);
    virtual bool do_insert_apply_overlay(wchar const *function);
    virtual bool do_select_expression();
    virtual bool do_next_operand();
    virtual bool do_prev_operand();
    virtual bool do_insert_char_by_name(wchar const *name);
    virtual bool do_insert_number(wchar const *text);
    virtual bool do_toggle_read_only();
    virtual bool do_toggle_inherit_read_only();
    // Whether insertion is open at all (asked with the empty name).
    virtual bool can_insert_overlay();
    // Whether this template may be entered over the selection; false for a null or empty name.
    virtual bool can_insert_symbol_overlay(wchar const *name);
    virtual bool can_insert_apply_overlay();
    virtual bool can_select_expression();
    virtual bool can_insert_char_by_name();
    virtual bool can_insert_number();
    // `state` gets the toggle's present state; the answer is whether it may be switched.
    virtual bool can_toggle_read_only(bool &state);
    virtual bool can_toggle_inherit_read_only(bool &state);
    // Asks the user for the size of a new table of the template with this keyword; false when the
    // user cancels.
    virtual bool query_array_dimensions(std::size_t &rows, std::size_t &cols, wchar const *keyword) = 0;

    // The host's walk over the templates, for menus and palettes.
    TemplatePosition *get_first_overlay_info_position();
    void get_next_overlay_info(MathOverlayTemplateInfo &info, TemplatePosition *&position);

    // Takes over an operation that the selection ran. A scene without a history frees it; a scene
    // with one keeps what changed the formula.
    virtual void record_operation(Kxt::Operation *op, bool done, EditKind kind);

protected:
    Selection *create_selection(long glyph_index) override = 0;

private:
    TemplateTable table_;
    MathStyle style_;
};

}  // namespace Tavi
