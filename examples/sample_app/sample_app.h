/* The sample application's entry points, in a library that both its device main and
 * special-sim --app use. special-sim looks them up by name:
 *   noltdev_app_start    required: brings the module up as on the device
 *   noltdev_app_stop     optional: shuts it down
 *   noltdev_app_control  optional: a state change the qualification suite asks for */
#ifndef SAMPLE_APP_H
#define SAMPLE_APP_H

/** @brief Brings the module up with the application's callbacks (noltDevSDK_special_init).
 *  @return 0, or the module's error code. Call once, from the application's thread. */
int noltdev_app_start(void);

/** @brief Shuts the module down (noltDevSDK_special_fini). */
void noltdev_app_stop(void);

/** @brief Carries out a request of the qualification suite; thread-safe.
 *  @param request "answer recv_msg TYPE CODE", "answer get_runtime_info TYPE CODE"
 *         (the callback answers CODE for TYPE), "answer ok" (work again) or
 *         "change TYPE" (the value given for runtime type TYPE changes).
 *  @return 0 done, -1 not understood. */
int noltdev_app_control(const char *request);

/** @brief The number of platform instructions received since start. */
int sample_app_received(void);

#endif
