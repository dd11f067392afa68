#pragma once

#include "ui/presentation/OnboardingPresentation.h"

#include <QtQml/qqml.h>

/// Makes the program's types known to the views of this folder.
struct OnboardingPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::OnboardingPresentation)
    QML_NAMED_ELEMENT(OnboardingPresentation)
    QML_UNCREATABLE("the program makes it")
};
