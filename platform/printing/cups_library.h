// CUPS's library, loaded when it is first called. It brings some twenty libraries along, for secure connections and for
// networks, which a program need not wait for before it shows a window.
#pragma once

#include <cups/cups.h>
#include <cups/ppd.h>

// What is called of it.
#define TAVRO_CUPS_FUNCTIONS(FUNCTION) \
    FUNCTION(cupsAddOption)            \
    FUNCTION(cupsArrayCount)           \
    FUNCTION(cupsArrayFirst)           \
    FUNCTION(cupsArrayNext)            \
    FUNCTION(cupsCancelJob2)           \
    FUNCTION(cupsDoRequest)            \
    FUNCTION(cupsEncodeOptions2)       \
    FUNCTION(cupsEncryption)           \
    FUNCTION(cupsFreeJobs)             \
    FUNCTION(cupsFreeOptions)          \
    FUNCTION(cupsGetFd)                \
    FUNCTION(cupsGetJobs2)             \
    FUNCTION(cupsGetPassword)          \
    FUNCTION(cupsGetResponse)          \
    FUNCTION(cupsLastError)            \
    FUNCTION(cupsLastErrorString)      \
    FUNCTION(cupsMarkOptions)          \
    FUNCTION(cupsParseOptions)         \
    FUNCTION(cupsSendRequest)          \
    FUNCTION(cupsServer)               \
    FUNCTION(cupsSetPasswordCB2)       \
    FUNCTION(cupsSetUser)              \
    FUNCTION(cupsUser)                 \
    FUNCTION(cupsWriteRequestData)     \
    FUNCTION(httpAssembleURIf)         \
    FUNCTION(httpClose)                \
    FUNCTION(httpConnect2)             \
    FUNCTION(httpGetFd)                \
    FUNCTION(httpGetLength2)           \
    FUNCTION(httpGetState)             \
    FUNCTION(httpGetStatus)            \
    FUNCTION(httpSetTimeout)           \
    FUNCTION(httpStatus)               \
    FUNCTION(ippAddBoolean)            \
    FUNCTION(ippAddInteger)            \
    FUNCTION(ippAddString)             \
    FUNCTION(ippAddStrings)            \
    FUNCTION(ippContainsString)        \
    FUNCTION(ippDelete)                \
    FUNCTION(ippFindAttribute)         \
    FUNCTION(ippFindNextAttribute)     \
    FUNCTION(ippFirstAttribute)        \
    FUNCTION(ippGetBoolean)            \
    FUNCTION(ippGetCount)              \
    FUNCTION(ippGetInteger)            \
    FUNCTION(ippGetName)               \
    FUNCTION(ippGetString)             \
    FUNCTION(ippGetValueTag)           \
    FUNCTION(ippLength)                \
    FUNCTION(ippNewRequest)            \
    FUNCTION(ippNextAttribute)         \
    FUNCTION(ippPort)                  \
    FUNCTION(ppdClose)                 \
    FUNCTION(ppdErrorString)           \
    FUNCTION(ppdFindAttr)              \
    FUNCTION(ppdFindChoice)            \
    FUNCTION(ppdFindCustomOption)      \
    FUNCTION(ppdFindNextAttr)          \
    FUNCTION(ppdFindOption)            \
    FUNCTION(ppdFirstCustomParam)      \
    FUNCTION(ppdLastError)             \
    FUNCTION(ppdMarkDefaults)          \
    FUNCTION(ppdNextCustomParam)       \
    FUNCTION(ppdOpenFd)                \
    FUNCTION(ppdPageSize)

// Its functions for PPDs are marked as deprecated in favour of IPP, which says nothing of a maker's own options.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
struct CupsFunctions {
// NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a member has none
#define TAVRO_CUPS_FUNCTION(name) decltype(&::name) name;
    TAVRO_CUPS_FUNCTIONS(TAVRO_CUPS_FUNCTION)
#undef TAVRO_CUPS_FUNCTION
};
#pragma GCC diagnostic pop

/// The functions, under their own names: cups().cupsServer(). Throws std::runtime_error, with the reason, where the
/// library cannot be loaded. Any thread may call it.
const CupsFunctions& cups();

/// What the module that is loaded exports.
extern "C" const CupsFunctions* tavroCupsFunctions();
