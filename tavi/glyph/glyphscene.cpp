// GlyphScene: drawing the root, selecting by point and by glyph, and the reaction to changes.
#include "tavi/glyph/glyphscene.h"

#include <memory>
#include <typeinfo>

#include "tavi/canvas/canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/commands.h"
#include "tavi/glyph/glyph.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/glyphscenememo.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/hint.h"

namespace Tavi {

namespace {

// The query pattern of every can_ operation: a fresh, disabled command, asked down the chain.
template <class C>
bool ask(GlyphScene &scene)
{
    C command;
    return scene.command_state(&command) && command.enabled();
}

template <class C>
bool run(GlyphScene &scene)
{
    C command;
    return scene.do_command(&command);
}

}  // namespace

GlyphScene::GlyphScene() : selection_(nullptr), selection_extension_(0, 0, no_extension, 0) {}

GlyphScene::~GlyphScene()
{
    if (selection_ && selection_->attached())
        selection_->detach();
    delete selection_;
}

bool GlyphScene::do_command(Command *command)
{
    if (Scene::do_command(command))
        return true;
    return selection_ ? selection_->do_command(command) : false;
}

bool GlyphScene::command_state(Command *command)
{
    if (Scene::command_state(command))
        return true;
    return selection_ ? selection_->command_state(command) : false;
}

bool GlyphScene::key_down(Input::Key key, int modifiers)
{
    if (use_standard_accelerators() && key == Input::key_c && modifiers == Input::modifier_control) {
        do_copy();
        return true;
    }
    return selection_ ? selection_->key_down(key, modifiers) : false;
}

bool GlyphScene::key_up(Input::Key key, int modifiers)
{
    return selection_ ? selection_->key_up(key, modifiers) : false;
}

bool GlyphScene::enter_char(wchar character)
{
    return selection_ ? selection_->enter_char(character) : false;
}

int GlyphScene::modifier_state() const
{
    return Scene::modifier_state();
}

wchar const *GlyphScene::type_name()
{
    return selection_ ? selection_->type_name() : u"";
}

Selection *GlyphScene::focus()
{
    return selection_ ? selection_->focus() : this;
}

SelectionMemo *GlyphScene::memo()
{
    // Only an attached selection is in a state worth keeping: between detach and attach its chain
    // may be half rebuilt.
    return new GlyphSceneMemo(this, selection_ && selection_->attached() ? selection_->memo() : nullptr);
}

Selection *GlyphScene::owner()
{
    return nullptr;
}

void GlyphScene::attach()
{
    if (selection_)
        selection_->attach();
}

void GlyphScene::detach()
{
    if (selection_)
        selection_->detach();
}

bool GlyphScene::attached()
{
    return selection_ ? selection_->attached() : false;
}

void GlyphScene::clear()
{
    if (selection_)
        selection_->clear();
}

void GlyphScene::highlight()
{
    if (selection_)
        selection_->highlight();
}

Glyph *GlyphScene::glyph()
{
    return nullptr;
}

Glyph *GlyphScene::selected_element()
{
    return selection_ ? selection_->selected_element() : nullptr;
}

bool GlyphScene::select_default()
{
    return selection_ ? selection_->select_default() : false;
}

GlyphScene *GlyphScene::scene()
{
    return this;
}

void GlyphScene::changed(ChangedAspect const &aspect)
{
    if (dynamic_cast<SelectionChange const *>(&aspect)) {
        invalidate_selection_extension();
        damage_content(DamageSelection::object());
    } else if (dynamic_cast<EditChange const *>(&aspect)) {
        invalidate_selection_extension();
        modified(true);
        if (Glyph *root = glyph())
            root->invalidate_allocation();
    } else {
        return;
    }
    scroll_to_selection();
}

long GlyphScene::glyph_index()
{
    return 0;
}

long GlyphScene::count()
{
    return selection_ ? selection_->count() : 0;
}

Glyph *GlyphScene::component(long index)
{
    return selection_ ? selection_->component(index) : nullptr;
}

bool GlyphScene::deselect(Glyph *g)
{
    if (!contains(g) || g == glyph())
        return false;
    clear();
    detach();
    // contains() was true and g is not the root, so there is a selection.
    if (selection_->deselect(g)) {
        selection(nullptr);
    } else {
        attach();
        highlight();
    }
    changed(SelectionChange::object());
    return false;
}

bool GlyphScene::contains(Glyph *g)
{
    if (g && g == glyph())
        return true;
    return selection_ ? selection_->contains(g) : false;
}

bool GlyphScene::select(Glyph *g)
{
    clear();
    detach();
    selection(create_selection(root_index_of(g)));
    bool const selected = selection_ ? selection_->select(g) : false;
    if (!selected && selection_)
        selection_->select_default();
    attach();
    highlight();
    changed(SelectionChange::object());
    return selected;
}

bool GlyphScene::select_at(View *view, Gauge *gauge, Point point)
{
    if (!selection_)
        return false;
    Glyph *root = glyph();
    GlyphContext context(this, view, gauge, root);
    clear();
    detach();
    bool selected = false;
    if (root && selection_) {
        AllocationTree const allocation = root_allocation(context);
        if (allocation.boxtree()) {
            std::unique_ptr<AllocationTree> own(root->allocate(selection_->glyph_index(), context, allocation));
            if (own)
                selected = selection_->select_at(context, *own, point);
        }
    }
    attach();
    highlight();
    if (!selected)
        return false;
    changed(SelectionChange::object());
    return true;
}

// The scene extension is the root's whole box; the selection extension is where the selection's
// allocate puts it, both moved by the canvas's translation.
void GlyphScene::draw(View *view, Canvas *canvas, bool invalidate)
{
    Glyph *root = glyph();
    if (!root || !canvas)
        return;
    if (invalidate)
        root->invalidate_allocation();
    GlyphContext context(this, view, canvas, root);
    AllocationTree const allocation = root_allocation(context);
    if (!allocation.boxtree())
        return;
    if (view)
        view->set_scene_extension(Extension(canvas, allocation));
    invalidate_selection_extension();
    if (selection_) {
        std::unique_ptr<AllocationTree> own(root->allocate(selection_->glyph_index(), context, allocation));
        if (own) {
            std::unique_ptr<AllocationTree> selected(selection_->allocate(context, *own));
            if (selected && selected->boxtree())
                selection_extension_.set(canvas, *selected);
        }
    }
    root->draw(context, allocation);
}

bool GlyphScene::can_copy()
{
    return ask<CopyCmd>(*this);
}

bool GlyphScene::do_copy()
{
    return run<CopyCmd>(*this);
}

bool GlyphScene::can_select_all()
{
    return ask<SelectAllCmd>(*this);
}

bool GlyphScene::do_select_all()
{
    return run<SelectAllCmd>(*this);
}

bool GlyphScene::can_select_next()
{
    return ask<SelectNextCmd>(*this);
}

bool GlyphScene::do_select_next()
{
    return run<SelectNextCmd>(*this);
}

bool GlyphScene::can_select_previous()
{
    return ask<SelectPreviousCmd>(*this);
}

bool GlyphScene::do_select_previous()
{
    return run<SelectPreviousCmd>(*this);
}

bool GlyphScene::can_select_out()
{
    return ask<SelectOutCmd>(*this);
}

bool GlyphScene::do_select_out()
{
    return run<SelectOutCmd>(*this);
}

bool GlyphScene::can_select_in()
{
    return ask<SelectInCmd>(*this);
}

bool GlyphScene::do_select_in()
{
    return run<SelectInCmd>(*this);
}

void GlyphScene::scroll_to_selection()
{
    if (!selection_)
        return;
    long const n = view_count();
    for (long i = 0; i < n; ++i) {
        if (auto *v = dynamic_cast<GlyphView *>(view_at(i)))
            v->scroll_to_selection();
    }
}

bool GlyphScene::selection_extension(View *, Extension &extension)
{
    if (selection_extension_.bottom() == no_extension)
        return false;
    extension = selection_extension_;
    return true;
}

bool GlyphScene::read_only() const
{
    return false;
}

void GlyphScene::selection(Selection *selection)
{
    invalidate_selection_extension();
    if (selection == selection_)
        return;
    delete selection_;
    selection_ = selection;
}

Selection *GlyphScene::selection() const
{
    return selection_;
}

Selection *GlyphScene::create_selection(long)
{
    return nullptr;
}

// The formula's top left corner stands at (0, 0): the baseline is one ascent down.
AllocationTree GlyphScene::root_allocation(GlyphContext &context)
{
    Glyph *root = glyph();
    BoxTree const *tree = root ? root->request(context, BoxTree::unconstrained) : nullptr;
    if (!tree)
        return AllocationTree();
    return AllocationTree(Point(0, tree->ascent()), tree);
}

bool GlyphScene::use_standard_accelerators() const
{
    return true;
}

long GlyphScene::root_index_of(Glyph *g)
{
    Glyph *root = glyph();
    if (!root || !g)
        return 0;
    Glyph *child = g;
    while (child->parent() && child->parent() != root)
        child = child->parent();
    if (child->parent() != root)
        return 0;
    long const n = root->count();
    for (long i = 0; i < n; ++i) {
        if (root->component(i) == child)
            return i;
    }
    return 0;
}

}  // namespace Tavi
