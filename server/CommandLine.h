#pragma once

#include <QString>

class QCoreApplication;

namespace CommandLine {

/// Names the application, answers help and version (which end the process), and returns the path of the
/// configuration file: the config option's value, else "../korvax_config_qdcpos.json".
QString Process(QCoreApplication& application);

}  // namespace CommandLine
