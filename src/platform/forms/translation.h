#pragma once

namespace forms {

// Makes the toolkit speak Brazilian Portuguese: its own translation where it is installed, and what
// the screens can show of it (context menus, standard buttons) in any case.
void InstallTranslation();

}  // namespace forms
