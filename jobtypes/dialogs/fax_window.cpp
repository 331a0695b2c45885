#include "jobtypes/dialogs/fax_window.h"

OSStatus FaxWindow::load(CFStringRef name) {
    return DialogWindow::load(CFSTR("LANFAX"), name);
}
