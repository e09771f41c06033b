// MathInsertCharOp and MathDeleteCharOp.
#include "tavi/editing/mathtextops.h"

#include "tavi/editing/mathselection.h"
#include "tavi/math/mathnode.h"

namespace Tavi {

MathInsertCharOp::MathInsertCharOp(MathEditScene *scene, MathString const &t, long p)
    : MathEditOp(scene), text(t), position(p)
{
}

bool MathInsertCharOp::on_doit(MathSelection *selection)
{
    MathNode *atom = selection->selected_node();
    MathString s = atom->text();
    if (text.empty() || position < 0 || static_cast<std::size_t>(position) > s.length())
        return false;
    s.insert(static_cast<std::size_t>(position), text);
    atom->text(s, position + static_cast<long>(text.length()));
    return true;
}

bool MathInsertCharOp::on_undo(MathSelection *selection)
{
    MathNode *atom = selection->selected_node();
    MathString s = atom->text();
    if (static_cast<std::size_t>(position) + text.length() > s.length())
        return false;
    s.erase(static_cast<std::size_t>(position), text.length());
    atom->text(s, position);
    return true;
}

MathDeleteCharOp::MathDeleteCharOp(MathEditScene *scene, long p, bool f) : MathEditOp(scene), position(p), forward(f)
{
}

bool MathDeleteCharOp::on_doit(MathSelection *selection)
{
    MathNode *atom = selection->selected_node();
    MathString s = atom->text();
    std::size_t at = static_cast<std::size_t>(position < 0 ? 0 : position);
    if (at > s.length() || (forward ? at == s.length() : at == 0))
        return false;
    if (!forward)
        at = s.prev_char(at);
    std::size_t const end = s.next_char(at);
    text = s.substr(at, end - at);
    s.erase(at, end - at);
    position = static_cast<long>(at);
    atom->text(s, position);
    return true;
}

bool MathDeleteCharOp::on_undo(MathSelection *selection)
{
    MathNode *atom = selection->selected_node();
    MathString s = atom->text();
    if (static_cast<std::size_t>(position) > s.length())
        return false;
    s.insert(static_cast<std::size_t>(position), text);
    // A backspace leaves the caret behind the character it took back, where it stood before.
    if (!forward)
        position += static_cast<long>(text.length());
    atom->text(s, position);
    return true;
}

}  // namespace Tavi
