/* The platform's codes and key names the domain answers to, each written once: the
 * feature switches with their codes, the key-value setting names and the work-mode plan
 * type. The command table, the handlers and the status items all take them from here. */
#ifndef SPECIAL_PLATFORM_KEYS_H
#define SPECIAL_PLATFORM_KEYS_H

#include "noltDevSDK_special_def.h"

/* A macro's value as text ("17" from 17); the redirect keys are the codes as text. */
#define SPECIAL_TEXT_OF(value) SPECIAL_TEXT_OF_(value)
#define SPECIAL_TEXT_OF_(value) #value

/* The platform's feature switches: its code (the redirect key is the code as text) and
 * the module's switch type the application sees. */
struct SpecialSwitch {
    int code;
    NOLTDEVSDK_SPECIAL_SWITCH_ENABLE_TYPE_E type;
};
#define SPECIAL_SWITCH_FLOW 15
#define SPECIAL_SWITCH_CHIME_INDICATOR 611
#define SPECIAL_SWITCH_LINGER_ALARM 613
#define SPECIAL_SWITCH_FACE_RECG 614
#define SPECIAL_SWITCH_DISTORTION 617
static constexpr SpecialSwitch kSpecialSwitchFlow = {SPECIAL_SWITCH_FLOW,
                                                     NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FLOW_COUNT};
static constexpr SpecialSwitch kSpecialSwitchChimeIndicator = {
    SPECIAL_SWITCH_CHIME_INDICATOR, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_CHIME_INDICATOR_LIGHT};
static constexpr SpecialSwitch kSpecialSwitchLingerAlarm = {SPECIAL_SWITCH_LINGER_ALARM,
                                                            NOLTDEVSDK_SPECIAL_SWITCH_TYPE_LINGER_ALARM};
static constexpr SpecialSwitch kSpecialSwitchFaceRecg = {SPECIAL_SWITCH_FACE_RECG,
                                                         NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FACE_RECOGNITION};
static constexpr SpecialSwitch kSpecialSwitchDistortion = {
    SPECIAL_SWITCH_DISTORTION, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_DISTORTION_CORRECTION};

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
