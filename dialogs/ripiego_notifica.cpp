// Fallbacks of CDigit's two notification switches, defined weak so that the
// connection's own definitions take their place wherever both are linked.
// They do what the switches do with no port: store or clear the target of
// the link record. Nothing waits here for a notification in flight.
#include "digit.h"
#include "reports/digit_link.h"

__attribute__((weak)) int CDigit::SetCommNotificationTo(CDigitNtfy* target)
{
    Scrivi(digitLink.ntfy, target);
    return 0;
}

__attribute__((weak)) void CDigit::StopCommNotification() { Scrivi(digitLink.ntfy, nullptr); }
