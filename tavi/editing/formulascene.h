// FormulaScene: a ready scene for editing one formula, for hosts that need no scene class of their
// own. It shows a MathRootNode, gives it a MathSelection, keeps an undo history of what the
// selection did (undo and redo also answer UndoCmd and RedoCmd), can break the formula into lines
// of a given width, reads and writes the content format, and asks the host for the size of a new
// table through a function the host sets.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "tavi/editing/edithistory.h"
#include "tavi/editing/matheditscene.h"

namespace Tavi {

class FormulaSceneGlyph;
class MathRootNode;

class FormulaScene : public MathEditScene
{
public:
    // Answers a table's rows and columns, or false when the user cancels; the keyword is the
    // template's display name.
    using ArrayDimensionsQuery = std::function<bool(std::size_t &rows, std::size_t &cols, wchar const *keyword)>;

    // An empty formula (one placeholder), selected.
    FormulaScene();
    ~FormulaScene() override;

    // The glyph the views draw: it holds the formula as its one component.
    Glyph *glyph() override;

    MathRootNode *formula() const;
    // Shows `root` (a reference is taken) instead of the present formula, with the whole expression
    // selected; the history is forgotten and the scene is unmodified.
    void formula(MathRootNode *root);
    // An empty formula: one placeholder.
    void new_formula();
    // Reads a whole document in the content format and shows it. False, with the present formula
    // kept, for text that is not well-formed XML or holds no formula; content the reader refuses
    // raises BadMathEditContent, also with the present formula kept.
    bool read_content(std::string const &xml);
    // The formula in the content format, UTF-8.
    std::string content();

    // Breaks the formula into lines of this width in points; 0 (the default) for one line.
    void wrap_width(double points);
    double wrap_width() const { return wrap_width_; }

    EditHistory &history() { return history_; }
    // Undo and redo, refused while the formula is read-only.
    bool can_undo();
    bool can_redo();
    bool do_undo();
    bool do_redo();

    // UndoCmd and RedoCmd are answered here; everything else goes down the chain.
    bool do_command(Command *command) override;
    bool command_state(Command *command) override;
    // A move of the selection ends the typing step of the history.
    void changed(ChangedAspect const &aspect) override;
    void modified(bool on) override;
    bool modified() const override;

    void array_dimensions_query(ArrayDimensionsQuery query) { query_ = std::move(query); }
    // The host's function, or false when there is none.
    bool query_array_dimensions(std::size_t &rows, std::size_t &cols, wchar const *keyword) override;
    // Keeps what changed the formula in the history.
    void record_operation(Kxt::Operation *op, bool done, EditKind kind) override;

protected:
    Selection *create_selection(long glyph_index) override;
    // With a wrap width, the formula is measured for that width instead of without a limit.
    AllocationTree root_allocation(GlyphContext &context) override;

private:
    FormulaSceneGlyph *glyph_;
    EditHistory history_;
    ArrayDimensionsQuery query_;
    double wrap_width_ = 0.0;
    bool modified_ = false;
};

}  // namespace Tavi
