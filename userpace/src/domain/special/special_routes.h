/* The routing table: what the router does with each platform command of the domain. */
#ifndef SPECIAL_ROUTES_H
#define SPECIAL_ROUTES_H

#include "special_bus.h"

/* A handler that takes the raw body, without the request/response frame. */
typedef int (*special_handle_platform_raw)(void *buf, int buf_len);

/* One row. With `handler` the command runs inside the frame and is answered under
 * `rsp_cmd` (0: the frame sends nothing); with `raw_handler` it gets the body as it came;
 * with neither it is ignored. */
typedef struct special_route {
    int cmd;
    special_handle_platform_req_and_rsp handler;
    int rsp_cmd;
    special_handle_platform_raw raw_handler;
} special_route;

/* The row of cmd, or NULL when the command goes to the application raw. */
const special_route *SpecialRouteFind(int cmd);

#endif
