// Font: the handle that shares a FontSpec and follows its copy-on-write setters.
#include "tavi/canvas/font.h"

#include "tavi/canvas/fontimpl.h"

namespace Tavi {

Font::Font() : spec_(new FontSpec()) { spec_->ref(); }

Font::Font(wchar const *name, long size, bool bold, bool italic) : spec_(new FontSpec(name, size, bold, italic))
{
    spec_->ref();
}

Font::Font(Font const &other) : spec_(other.spec_) { spec_->ref(); }

Font &Font::operator=(Font const &other)
{
    other.spec_->ref();
    spec_->unref();
    spec_ = other.spec_;
    return *this;
}

Font::~Font() { spec_->unref(); }

wchar const *Font::name() const { return spec_->name(); }
long Font::size() const { return spec_->size(); }
bool Font::bold() const { return spec_->bold(); }
bool Font::italic() const { return spec_->italic(); }
unsigned long Font::hash() const { return spec_->hash(); }

// The reference on the answer is taken before the old one is released: they may be the same object.
void Font::adopt(FontSpec *spec)
{
    spec->ref();
    spec_->unref();
    spec_ = spec;
}

void Font::name(wchar const *name) { adopt(spec_->name(name)); }
void Font::size(long size) { adopt(spec_->size(size)); }
void Font::bold(bool bold) { adopt(spec_->bold(bold)); }
void Font::italic(bool italic) { adopt(spec_->italic(italic)); }

bool operator==(Font const &a, Font const &b) { return a.spec() == b.spec() || a.spec()->equal(*b.spec()); }
bool operator!=(Font const &a, Font const &b) { return !(a == b); }
bool operator<(Font const &a, Font const &b) { return a.spec()->less(*b.spec()); }

}  // namespace Tavi
