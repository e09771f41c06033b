// The nine hint singletons.
#include "tavi/glyph/hint.h"

namespace Tavi {

Hint::~Hint() = default;

DamageAspect const DamageAspect::object_{};
DamageSelection const DamageSelection::object_{};
ChangedAspect const ChangedAspect::object_{};
SelectionChange const SelectionChange::object_{};
EditChange const EditChange::object_{};
UserEditChange const UserEditChange::object_{};
UserContentChange const UserContentChange::object_{};
UserStyleChange const UserStyleChange::object_{};
DOMEditChange const DOMEditChange::object_{};

DamageAspect const &DamageAspect::object() { return object_; }
DamageSelection const &DamageSelection::object() { return object_; }
ChangedAspect const &ChangedAspect::object() { return object_; }
SelectionChange const &SelectionChange::object() { return object_; }
EditChange const &EditChange::object() { return object_; }
UserEditChange const &UserEditChange::object() { return object_; }
UserContentChange const &UserContentChange::object() { return object_; }
UserStyleChange const &UserStyleChange::object() { return object_; }
DOMEditChange const &DOMEditChange::object() { return object_; }

}  // namespace Tavi
