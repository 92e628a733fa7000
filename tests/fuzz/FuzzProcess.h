#pragma once

#include <QByteArray>
#include <QString>

namespace fuzz {

/// Makes the application object and silences the log; does nothing from the second call on. Every target calls it
/// first.
void Prepare();

/// A folder of this process's own, gone at its end: the only place that targets write to. Without "/" at the end.
QString ScratchFolder();

/// Writes over the scratch file of this name and gives its path.
QString WriteScratchFile(const QString& name, const QByteArray& bytes);

}  // namespace fuzz
