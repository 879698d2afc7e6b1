/* A C application may store any int in msg_type: this caller does, as C allows. */
#include "noltDevSDK_special_def.h"

int special_c_send_msg_type(int type) {
    noltDevSDK_special_msg msg;
    msg.msg_type = type;
    msg.msg_struct_ptr = 0;
    return noltDevSDK_special_send_msg(&msg);
}
