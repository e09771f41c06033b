// HierarchicalSingleSelection: the chain rule (inward first) and selecting in, out and by glyph.
#include "tavi/glyph/hierarchicalsingleselection.h"

#include <memory>
#include <typeinfo>

#include "tavi/geometry/allocationtree.h"
#include "tavi/glyph/commands.h"
#include "tavi/glyph/glyph.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/hint.h"

namespace Tavi {

HierarchicalSingleSelection::HierarchicalSingleSelection(Selection *owner, long glyph_index)
    : GlyphSelection(owner, glyph_index), sub_selection_(nullptr)
{
}

HierarchicalSingleSelection::~HierarchicalSingleSelection()
{
    delete sub_selection_;
}

// A command goes inward first and comes back to this level when the inner selections refuse it.
bool HierarchicalSingleSelection::do_command(Command *command)
{
    if (sub_selection_ && sub_selection_->do_command(command))
        return true;
    return handle_command(command);
}

bool HierarchicalSingleSelection::command_state(Command *command)
{
    if (sub_selection_ && sub_selection_->command_state(command))
        return true;
    return handle_command_state(command);
}

// Keys and characters belong to the focus alone: what the sub-selection leaves is not taken here.
bool HierarchicalSingleSelection::key_down(Input::Key key, int modifiers)
{
    return sub_selection_ ? sub_selection_->key_down(key, modifiers) : false;
}

bool HierarchicalSingleSelection::key_up(Input::Key key, int modifiers)
{
    return sub_selection_ ? sub_selection_->key_up(key, modifiers) : false;
}

bool HierarchicalSingleSelection::enter_char(wchar character)
{
    return sub_selection_ ? sub_selection_->enter_char(character) : false;
}

// The allocation given is that of glyph(); the sub-selection is asked at its own child's allocation.
bool HierarchicalSingleSelection::select_at(GlyphContext &context, AllocationTree const &allocation, Point point)
{
    if (!sub_selection_)
        return false;
    Glyph *g = glyph();
    if (!g)
        return false;
    std::unique_ptr<AllocationTree> child(g->allocate(sub_selection_->glyph_index(), context, allocation));
    if (!child)
        return false;
    return sub_selection_->select_at(context, *child, point);
}

wchar const *HierarchicalSingleSelection::type_name()
{
    return sub_selection_ ? sub_selection_->type_name() : own_type_name();
}

Selection *HierarchicalSingleSelection::focus()
{
    return sub_selection_ ? sub_selection_->focus() : this;
}

void HierarchicalSingleSelection::attach()
{
    if (sub_selection_)
        sub_selection_->attach();
    GlyphSelection::attach();
}

void HierarchicalSingleSelection::detach()
{
    if (sub_selection_)
        sub_selection_->detach();
    GlyphSelection::detach();
}

void HierarchicalSingleSelection::clear()
{
    if (sub_selection_)
        sub_selection_->clear();
    else
        damage_own_highlight();
}

void HierarchicalSingleSelection::highlight()
{
    if (sub_selection_)
        sub_selection_->highlight();
    else
        damage_own_highlight();
}

Glyph *HierarchicalSingleSelection::selected_element()
{
    return sub_selection_ ? sub_selection_->selected_element() : glyph();
}

bool HierarchicalSingleSelection::select_default()
{
    return sub_selection_ ? sub_selection_->select_default() : false;
}

AllocationTree *HierarchicalSingleSelection::allocate(GlyphContext &context, AllocationTree const &allocation)
{
    Glyph *g = glyph();
    if (!g)
        return nullptr;
    if (!sub_selection_)
        return g->allocate(context, allocation);
    std::unique_ptr<AllocationTree> child(g->allocate(sub_selection_->glyph_index(), context, allocation));
    if (!child)
        return nullptr;
    return sub_selection_->allocate(context, *child);
}

long HierarchicalSingleSelection::count()
{
    return sub_selection_ ? sub_selection_->count() : 1;
}

Glyph *HierarchicalSingleSelection::component(long index)
{
    return sub_selection_ ? sub_selection_->component(index) : glyph();
}

// The whole selection must go when its own glyph leaves; a sub-selection that must go is dropped,
// and this level stays.
bool HierarchicalSingleSelection::deselect(Glyph *g)
{
    if (g == glyph())
        return true;
    if (sub_selection_ && sub_selection_->deselect(g))
        sub_selection(nullptr);
    return false;
}

bool HierarchicalSingleSelection::contains(Glyph *g)
{
    if (g == glyph())
        return true;
    return sub_selection_ ? sub_selection_->contains(g) : false;
}

// Keeps the present sub-selection when it can take the glyph; otherwise this level, or the first
// child whose new sub-selection takes it.
bool HierarchicalSingleSelection::select(Glyph *g)
{
    if (sub_selection_ && sub_selection_->select(g))
        return true;
    sub_selection(nullptr);
    Glyph *own = glyph();
    if (g == own)
        return true;
    if (!own)
        return false;
    long const n = own->count();
    for (long i = 0; i < n; ++i) {
        if (select_child(i) && sub_selection_ && sub_selection_->select(g))
            return true;
    }
    sub_selection(nullptr);
    return false;
}

void HierarchicalSingleSelection::sub_selection(Selection *selection)
{
    if (selection == sub_selection_)
        return;
    delete sub_selection_;
    sub_selection_ = selection;
}

Selection *HierarchicalSingleSelection::sub_selection() const
{
    return sub_selection_;
}

// A level that cannot select out (or in) leaves the command alone, so that an outer level that can
// is asked next.
bool HierarchicalSingleSelection::handle_command_state(Command *command)
{
    Command &c = *command;
    bool able = false;
    if (typeid(c) == typeid(SelectOutCmd))
        able = can_select_out();
    else if (typeid(c) == typeid(SelectInCmd))
        able = can_select_in();
    if (able)
        command->enable(true);
    return able;
}

bool HierarchicalSingleSelection::handle_command(Command *command)
{
    Command &c = *command;
    if (typeid(c) == typeid(SelectOutCmd))
        return select_out();
    if (typeid(c) == typeid(SelectInCmd))
        return select_in();
    return false;
}

// Every change of the chain is bracketed on the scene: highlight off and detached before, attached
// and highlighted after.
bool HierarchicalSingleSelection::select_out()
{
    if (!sub_selection_)
        return false;
    GlyphScene *s = scene();
    if (s) {
        s->clear();
        s->detach();
    }
    sub_selection(nullptr);
    if (s) {
        s->attach();
        s->highlight();
    }
    return true;
}

bool HierarchicalSingleSelection::can_select_out()
{
    return sub_selection_ != nullptr;
}

bool HierarchicalSingleSelection::select_in()
{
    Glyph *own = glyph();
    if (sub_selection_ || !own || own->count() < 1)
        return false;
    GlyphScene *s = scene();
    if (s) {
        s->clear();
        s->detach();
    }
    bool selected = false;
    long const n = own->count();
    for (long i = 0; i < n && !selected; ++i)
        selected = select_child(i);
    if (s) {
        s->attach();
        s->highlight();
    }
    return selected;
}

bool HierarchicalSingleSelection::can_select_in()
{
    Glyph *own = glyph();
    return !sub_selection_ && own && own->count() >= 1;
}

void HierarchicalSingleSelection::damage_own_highlight()
{
    if (GlyphScene *s = scene())
        s->damage_content(DamageSelection::object());
}

}  // namespace Tavi
