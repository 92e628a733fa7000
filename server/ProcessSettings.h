#pragma once

class QObject;

namespace korvax {

/// What suits this program best of what the whole process can choose. Before anything else in main.
void ApplyProcessSettings();

/// Gives memory that nothing uses back to the system.
void ReturnFreeMemory();
/// Does so once a minute, from the thread of the parent, as long as that lives.
void ReturnFreeMemoryEveryMinute(QObject* parent);

}  // namespace korvax
