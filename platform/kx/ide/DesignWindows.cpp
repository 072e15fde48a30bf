// SPDX-License-Identifier: MIT
// Registers design windows for what designers tell.

#include "kx/ide/DesignWindows.h"

namespace kx {

const TClass& TDesignWindow::StaticClass() {
    static const TClassBuilder<TDesignWindow> cls("TDesignWindow", TForm::StaticClass());
    return cls.Class();
}

TDesignWindow::TDesignWindow(TComponent* owner) : TForm(owner) { RegisterDesignNotification(*this); }

TDesignWindow::~TDesignWindow() { UnregisterDesignNotification(*this); }

} // namespace kx
