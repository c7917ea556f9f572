#pragma once

namespace forms {

// Makes the toolkit speak Brazilian Portuguese: by its own translation, which the packages bring
// along, and in what that leaves out.
void InstallTranslation();

}  // namespace forms
