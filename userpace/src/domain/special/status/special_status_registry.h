/* Registration of the 22 status items with the report-status service, and the one-shot
 * trusteeship report the application can ask for. Called from the control thread. */
#ifndef SPECIAL_STATUS_REGISTRY_H
#define SPECIAL_STATUS_REGISTRY_H

/* Registers the 22 status items in the registry's order. */
void SpecialStatusRegisterAll(void);
/* Unregisters the 21 items that fini takes down (92 stays registered). */
void SpecialStatusUnregisterAll(void);
/* Reads the trusteeship afresh and reports it at once. */
int ReportTrusteeship_Immediately(void);

#endif
