// MathEditContentHandler: the reader of the math edit content format.
#include "tavi/interchange/matheditcontenthandler.h"

namespace Tavi {

char const *BadMathEditContent::what() const noexcept { return "bad math edit content"; }

char const *MathEditContentHandler::nameSpace() { return "http://www.tavi-math.org/xml/MathEditContent"; }

}  // namespace Tavi
