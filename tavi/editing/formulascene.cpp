// FormulaScene: one formula, its selection, its history and its wrap width.
#include "tavi/editing/formulascene.h"

#include <cmath>
#include <memory>
#include <typeinfo>

#include "tavi/canvas/gauge.h"
#include "tavi/editing/mathselection.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/commands.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/hint.h"
#include "tavi/glyph/monoglyph.h"
#include "tavi/interchange/content.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

// The scene's root glyph: the formula is its body and its one component, placed where the scene
// glyph is placed. It tells the formula which scene it is in.
class FormulaSceneGlyph : public MonoGlyph
{
public:
    explicit FormulaSceneGlyph(FormulaScene *scene) : scene_(scene) {}
    GlyphScene *scene() override { return scene_; }
    AllocationTree *allocate(long, GlyphContext &, AllocationTree const &allocation) override
    {
        return new AllocationTree(allocation);
    }
    using MonoGlyph::allocate;
    // An edit or a new surface needs the formula measured again; its nodes know for themselves
    // whether the boxes they keep still hold, so the walk through the whole tree is saved.
    void invalidate_allocation() override
    {
        if (auto *root = dynamic_cast<MathRootNode *>(body()))
            root->forget_layout();
    }
    long count() override { return body() ? 1 : 0; }
    Glyph *component(long) override { return body(); }
    Glyph *clone(bool) const override { return nullptr; }

private:
    FormulaScene *scene_;
};

FormulaScene::FormulaScene() : glyph_(new FormulaSceneGlyph(this))
{
    glyph_->ref();
    new_formula();
    wrap_width(0.0);
}

FormulaScene::~FormulaScene()
{
    // The selection holds the formula; both go before the templates of the table do.
    selection(nullptr);
    history_.clear();
    glyph_->unref();
}

Glyph *FormulaScene::glyph() { return glyph_; }

MathRootNode *FormulaScene::formula() const { return static_cast<MathRootNode *>(glyph_->body()); }

void FormulaScene::formula(MathRootNode *root)
{
    if (root == nullptr)
        return;
    clear();
    detach();
    selection(nullptr);
    history_.clear();
    glyph_->body(root);
    select(root);
    modified(false);
}

void FormulaScene::new_formula()
{
    MathNode *placeholder = template_table()->get_dummy_template()->create_node();
    formula(new MathRootNode(placeholder));
}

bool FormulaScene::read_content(std::string const &xml)
{
    MathRootNode *root = read_math_content(*template_table(), xml);
    if (root == nullptr)
        return false;
    formula(root);
    return true;
}

std::string FormulaScene::content() { return write_math_content(*formula()); }

void FormulaScene::wrap_width(double points)
{
    wrap_width_ = points > 0.0 ? points : 0.0;
    math_style()->set_boolean(MathStyle::a_wrap_lines, wrap_width_ > 0.0);
    formula()->invalidate_allocation();
    invalidate_selection_extension();
    damage_all();
}

AllocationTree FormulaScene::root_allocation(GlyphContext &context)
{
    if (wrap_width_ <= 0.0 || context.gauge() == nullptr)
        return MathEditScene::root_allocation(context);
    // The width in the gauge's own units: points times its dots per point.
    long const width = std::lround(wrap_width_ * static_cast<double>(context.gauge()->dpi().width()) / 72.0);
    BoxTreeLeaf const limits(width < 1 ? 1 : width, 0x7fffffff, 0x7fffffff);
    BoxTree const *tree = glyph_->request(context, limits);
    if (tree == nullptr)
        return AllocationTree();
    return AllocationTree(Point(0, tree->ascent()), tree);
}

Selection *FormulaScene::create_selection(long glyph_index) { return new MathSelection(this, glyph_index); }

// ---- History ----

bool FormulaScene::can_undo() { return history_.can_undo() && !formula()->read_only(); }

bool FormulaScene::can_redo() { return history_.can_redo() && !formula()->read_only(); }

bool FormulaScene::do_undo() { return can_undo() && history_.undo(); }

bool FormulaScene::do_redo() { return can_redo() && history_.redo(); }

bool FormulaScene::do_command(Command *command)
{
    if (command != nullptr && typeid(*command) == typeid(UndoCmd))
        return do_undo();
    if (command != nullptr && typeid(*command) == typeid(RedoCmd))
        return do_redo();
    return MathEditScene::do_command(command);
}

bool FormulaScene::command_state(Command *command)
{
    if (command != nullptr && typeid(*command) == typeid(UndoCmd)) {
        command->enable(can_undo());
        return true;
    }
    if (command != nullptr && typeid(*command) == typeid(RedoCmd)) {
        command->enable(can_redo());
        return true;
    }
    return MathEditScene::command_state(command);
}

void FormulaScene::record_operation(Kxt::Operation *op, bool done, EditKind kind) { history_.record(op, done, kind); }

void FormulaScene::changed(ChangedAspect const &aspect)
{
    if (dynamic_cast<SelectionChange const *>(&aspect))
        history_.seal();
    MathEditScene::changed(aspect);
}

void FormulaScene::modified(bool on)
{
    modified_ = on;
    MathEditScene::modified(on);
}

bool FormulaScene::modified() const { return modified_; }

bool FormulaScene::query_array_dimensions(std::size_t &rows, std::size_t &cols, wchar const *keyword)
{
    return query_ && query_(rows, cols, keyword);
}

}  // namespace Tavi
