#include "platform/idom/VRDIDOM_Attr.h"

I18NString VRDIDOM_Attr::getValue() { return getNodeValue(); }
