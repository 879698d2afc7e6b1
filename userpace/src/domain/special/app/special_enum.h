/* Reading enum-typed members that C code wrote. A C caller may store any int in an
 * enum member; loading a value outside the enumerators' range as the C++ enum is
 * undefined, so such members are read as the integer they hold. */
#ifndef SPECIAL_ENUM_H
#define SPECIAL_ENUM_H

#include <string.h>

#include <type_traits>

/* The integer stored in an enum member written by C code (the application or the
 * kernel), copied out as the enum's underlying type so that no enum value is loaded. */
template <typename E> typename std::underlying_type<E>::type SpecialEnumValue(const E &member) {
    typename std::underlying_type<E>::type value;
    memcpy(&value, &member, sizeof value);
    return value;
}

#endif
