/* Integer members of the JSON objects the module prints. */
#ifndef SPECIAL_JSON_H
#define SPECIAL_JSON_H

#include "bscJSON.h"

/* Adds an integer member to obj, printed exactly as a number member of that value would
 * be; the member is for printing only (it does not read back as a number). Returns the
 * member, or NULL when it could not be added. */
bscJSON *SpecialJsonAddInt(bscJSON *obj, const char *name, int value);

#endif
