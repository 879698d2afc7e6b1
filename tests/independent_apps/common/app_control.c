#include "app_control.h"

#include <pthread.h>
#include <stdlib.h>
#include <string.h>

struct name {
    const char *text;
    int value;
};

#define NAME(x)                                                                                              \
    { #x, (int)(x) }

static const struct name msg_names[] = {NAME(NOLTDEVSDK_SPECIAL_ON_SET_FLOW_COUNTING_CFG),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_SET_LINKAGE_MODE_STATUS),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_WAKE),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_DEL_TRUSTEESHIP),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_TRANS_CMD_MSG),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_UNBINDUSER),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_SET_VODDNS_MAPPED_PORT),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_SAVE_FACE_DET_INFO),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_EDIT_FACE_DET_INFO),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_DELETE_FACE_DET_INFO),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_QUERY_FACE_DET_INFO),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_PROWL_DRIVE_OUT),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_DRIVE_OUT_RADIO_UPDATE),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_BATTERY_WORK_MODE),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_RING_SOUND),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_PLAN),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE),
                                        NAME(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG),
                                        {NULL, 0}};

static const struct name info_names[] = {NAME(NOLTDEVSDK_SPECIAL_ON_GET_FLOW_COUNTING_CFG),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE),
                                         NAME(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG),
                                         {NULL, 0}};

static const struct name code_names[] = {NAME(NOLTDEVSDK_SPECIAL_SUCESS),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_FAIL),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_NOT_INITED),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_THREAD_CREATE_FAIL),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_RSP_TIMEOUT),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_MSG_DATA_INVAILD),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_VOICE_DOWNLOAD_FAILED),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_VOICE_NOT_EXIST),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_VOICE_IS_BUSY),
                                         NAME(NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED),
                                         {"ok", 0},
                                         {NULL, 0}};

/* A number, or a tail of one name that starts at a '_' boundary (or the whole name). */
static int lookup(const struct name *names, const char *word, size_t n, int *value) {
    char *end;
    long long number = strtoll(word, &end, 0);
    if (n > 0 && (size_t)(end - word) == n) {
        *value = (int)(unsigned int)number;
        return 0;
    }
    int found = 0;
    for (const struct name *it = names; it->text != NULL; ++it) {
        size_t len = strlen(it->text);
        if (len < n || strncmp(it->text + len - n, word, n) != 0)
            continue;
        if (len > n && it->text[len - n - 1] != '_')
            continue;
        *value = it->value;
        ++found;
    }
    return found == 1 ? 0 : -1;
}

/* Splits off the next blank-separated word: its start and length. */
static const char *next_word(const char **cursor, size_t *n) {
    const char *p = *cursor;
    while (*p == ' ' || *p == '\t')
        ++p;
    const char *start = p;
    while (*p != '\0' && *p != ' ' && *p != '\t' && *p != '\n')
        ++p;
    *n = (size_t)(p - start);
    *cursor = p;
    return start;
}

static int word_is(const char *word, size_t n, const char *text) {
    return strlen(text) == n && strncmp(word, text, n) == 0;
}

int app_parse_request(const char *text, struct app_request *req) {
    size_t n;
    const char *cursor = text;
    const char *word = next_word(&cursor, &n);

    memset(req, 0, sizeof *req);
    if (word_is(word, n, "change")) {
        req->kind = APP_REQ_CHANGE;
        req->callback = APP_GET_RUNTIME_INFO;
        word = next_word(&cursor, &n);
        return lookup(info_names, word, n, &req->type);
    }
    if (!word_is(word, n, "answer"))
        return -1;
    word = next_word(&cursor, &n);
    if (word_is(word, n, "ok")) {
        req->kind = APP_REQ_ANSWER_OK;
        return 0;
    }
    req->kind = APP_REQ_ANSWER;
    if (word_is(word, n, "recv_msg"))
        req->callback = APP_RECV_MSG;
    else if (word_is(word, n, "get_runtime_info"))
        req->callback = APP_GET_RUNTIME_INFO;
    else
        return -1;
    word = next_word(&cursor, &n);
    if (lookup(req->callback == APP_RECV_MSG ? msg_names : info_names, word, n, &req->type) != 0)
        return -1;
    word = next_word(&cursor, &n);
    return lookup(code_names, word, n, &req->code);
}

#define APP_TYPES 32

static pthread_mutex_t answers_lock = PTHREAD_MUTEX_INITIALIZER;
static int answers_set[2][APP_TYPES];
static int answers_code[2][APP_TYPES];

void app_answer_set(enum app_callback callback, int type, int code) {
    if (type < 0 || type >= APP_TYPES)
        return;
    pthread_mutex_lock(&answers_lock);
    answers_set[callback][type] = code != 0;
    answers_code[callback][type] = code;
    pthread_mutex_unlock(&answers_lock);
}

void app_answer_clear_all(void) {
    pthread_mutex_lock(&answers_lock);
    memset(answers_set, 0, sizeof answers_set);
    pthread_mutex_unlock(&answers_lock);
}

int app_answer_forced(enum app_callback callback, int type, int *code) {
    int forced = 0;
    if (type < 0 || type >= APP_TYPES)
        return 0;
    pthread_mutex_lock(&answers_lock);
    if (answers_set[callback][type]) {
        forced = 1;
        *code = answers_code[callback][type];
    }
    pthread_mutex_unlock(&answers_lock);
    return forced;
}

void app_copy_text(char *to, size_t size, const char *from) {
    strncpy(to, from, size - 1);
    to[size - 1] = '\0';
}

int app_start(int (*recv_msg)(noltDevSDK_special_msg_to_dev *),
              int (*get_runtime_info)(noltDevSDK_special_runtime_info *)) {
    noltDevSDK_special_init_info init;

    memset(&init, 0, sizeof init);
    init.cb.recv_msg = recv_msg;
    init.cb.get_runtime_info = get_runtime_info;
    return noltDevSDK_special_init(&init);
}

int app_control(const char *request, unsigned msgs, unsigned items, int (*change_item)(int type)) {
    struct app_request req;

    if (request == NULL || app_parse_request(request, &req) != 0)
        return -1;
    if (req.kind == APP_REQ_ANSWER_OK) {
        app_answer_clear_all();
        return 0;
    }
    unsigned have = req.callback == APP_RECV_MSG ? msgs : items;
    if (req.type < 0 || req.type >= 32 || !(have & APP_BIT(req.type)))
        return -1;
    if (req.kind == APP_REQ_CHANGE)
        return change_item(req.type);
    app_answer_set(req.callback, req.type, req.code);
    return 0;
}
