/* A test application whose start function returns 0 without bringing the module up. */
int noltdev_app_start(void) {
    return 0;
}
