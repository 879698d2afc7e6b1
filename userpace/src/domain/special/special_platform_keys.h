/* The platform's codes and key names the domain answers to, each written once: the
 * feature switches with their codes, the key-value setting names and the work-mode plan
 * type. The redirect keys, the handlers and the status items are all made from these. */
#ifndef SPECIAL_PLATFORM_KEYS_H
#define SPECIAL_PLATFORM_KEYS_H

/* A macro's value as text ("17" from 17); the redirect keys are the codes as text. */
#define SPECIAL_TEXT_OF(value) SPECIAL_TEXT_OF_(value)
#define SPECIAL_TEXT_OF_(value) #value

/* The platform's feature switches, in redirect order, one X(code, Name, type, log) each:
 * the platform's code, the name the status item's functions are made from, the module's
 * switch type (NOLTDEVSDK_SPECIAL_SWITCH_ENABLE_TYPE_E), and the line logged when the
 * switch's redirect key cannot be registered. */
#define SPECIAL_SWITCHES(X)                                                                                  \
    X(15, Flow, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FLOW_COUNT, "special register switch type error\n")           \
    X(611, ChimeIndicator, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_CHIME_INDICATOR_LIGHT,                             \
      "special register 611 switch type error\n")                                                            \
    X(613, LingerAlarm, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_LINGER_ALARM,                                         \
      "special register 613 switch type error\n")                                                            \
    X(614, FaceRecg, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FACE_RECOGNITION,                                        \
      "special register 614 switch type error\n")                                                            \
    X(617, Distortion, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_DISTORTION_CORRECTION,                                 \
      "special register 617 switch type error\n")

/* Names of the key-value settings (the "Type" of a set-key-value command and of the
 * matching status item); case-sensitive. */
#define SPECIAL_KEY_BATTERY_WORK_MODE "batteryCameraWorkMode"
#define SPECIAL_KEY_RING_TYPE "device_bell"
#define SPECIAL_KEY_NETWORK_MODE "networkingMode"
#define SPECIAL_KEY_ONE_CLICK_MUTE "OneClickMute"
#define SPECIAL_KEY_SPEAKER_CONFIG "SpeakerConfig"

/* The plan type of the work-mode plan, in the set-plan command and the plan report. */
#define SPECIAL_PLAN_TYPE_WORK_MODE 17

#endif
