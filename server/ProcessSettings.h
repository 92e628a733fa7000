#pragma once

namespace korvax {

/// What suits this program best of what the whole process can choose. Before anything else in main.
void ApplyProcessSettings();

}  // namespace korvax
