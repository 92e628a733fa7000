#pragma once

namespace korvax::client::help {

extern const char* const description;
extern const char* const footer;
extern const char* const queryFooter;
extern const char* const blocksFooter;
extern const char* const spectrumFooter;
extern const char* const timesFooter;
extern const char* const positionFooter;
extern const char* const imageFooter;
extern const char* const scopeFooter;
extern const char* const ratesFooter;
extern const char* const startFooter;
extern const char* const stopFooter;
extern const char* const resetFooter;
extern const char* const statusFooter;
extern const char* const runFooter;
extern const char* const hvFooter;
extern const char* const ledgerFooter;
extern const char* const filesFooter;
extern const char* const verifyFooter;
extern const char* const recoverFooter;
extern const char* const checkFooter;

}  // namespace korvax::client::help
