// The well-formedness rules of XML that pugixml leaves unchecked, checked over a text
// before it is parsed: characters and their UTF-8 form, references, names, tag and
// attribute syntax, comments, CDATA sections, processing instructions, the declaration's
// place and form, and the DOCTYPE's place. The element structure (nesting, one root,
// nothing beside it, attributes named once) is checked on the parsed tree.
#pragma once

#include <cstddef>

namespace noltdev_xml {

// True when text (len bytes, no NUL needed) breaks none of the lexical rules above. A
// DOCTYPE that declares entities is refused: the cursor would not expand them.
bool IsLexicallyWellFormed(const char *text, size_t len);

} // namespace noltdev_xml
