/* Integer members of the JSON objects the module prints. cJSON prints a number member
 * with "%1.15g" and then reads the text back to check it, which makes a number the most
 * expensive part of a small report. Every int has at most ten digits, so "%1.15g" prints
 * it exactly as "%d" does: the member is added as that text, which cJSON prints as it is. */
#include "special_json.h"

bscJSON *SpecialJsonAddInt(bscJSON *obj, const char *name, int value) {
    char digits[12];
    char *text = digits + sizeof digits - 1;
    *text = '\0';
    unsigned int rest = value < 0 ? 0u - static_cast<unsigned int>(value) : static_cast<unsigned int>(value);
    do {
        *--text = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (value < 0) {
        *--text = '-';
    }
    return bscJSON_AddRawToObject(obj, name, text);
}
