#pragma once

namespace korvax::client::help {

extern const char* const description;
extern const char* const footer;
extern const char* const queryFooter;
extern const char* const spectrumFooter;
extern const char* const startFooter;
extern const char* const stopFooter;
extern const char* const resetFooter;
extern const char* const statusFooter;

}  // namespace korvax::client::help
