// Layouts of widgets that have not been shown.

#include "platform/toolbox/layout.h"

#include <QLayout>
#include <QWidget>

void activateLayouts(QWidget* widget) {
    if (QLayout* layout = widget->layout()) {
        layout->activate();
    }
    for (QWidget* child : widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        activateLayouts(child);
    }
}
