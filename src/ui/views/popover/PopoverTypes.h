#pragma once

#include "ui/presentation/PopoverPresentation.h"

#include <QtQml/qqml.h>

// Makes the program's types known to the views of this folder.

struct PopoverPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::PopoverPresentation)
    QML_NAMED_ELEMENT(PopoverPresentation)
    QML_UNCREATABLE("the program makes it")
};

struct PopoverContentsForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::PopoverContents)
    QML_VALUE_TYPE(popoverContents)
};
