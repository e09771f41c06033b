// The parts of Xml::Handler that every handler shares: skipping elements and failing.
#include "tavi/kxt/xmlhandler.h"

namespace Kxt {
namespace Xml {

Attribute const *findAttribute(std::vector<Attribute> const &attributes, int name)
{
    for (Attribute const &attribute : attributes)
        if (attribute.name == name)
            return &attribute;
    return nullptr;
}

Attribute const *findAttribute(std::vector<Attribute> const &attributes, int nameSpace, int name)
{
    for (Attribute const &attribute : attributes)
        if (attribute.nameSpace == nameSpace && attribute.name == name)
            return &attribute;
    return nullptr;
}

Handler::~Handler() = default;

void Handler::characterData(char const *, int) {}

void Handler::cleanup() { ignore_depth_ = 0; }

void Handler::ignoreElement()
{
    if (ignore_depth_ == 0)
        ignore_depth_ = 1;
}

void Handler::endIgnoreElement() {}

void Handler::onEndElement(int nameSpace, int name)
{
    if (ignore_depth_ > 0) {
        if (--ignore_depth_ == 0)
            endIgnoreElement();
        return;
    }
    endElement(nameSpace, name);
}

void Handler::error(char const *message)
{
    if (!failed_) {
        failed_ = true;
        message_ = message ? message : "";
    }
}

void Handler::begin_document()
{
    ignore_depth_ = 0;
    failed_ = false;
    message_.clear();
}

}  // namespace Xml
}  // namespace Kxt
