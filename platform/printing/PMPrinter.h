// Printers: CUPS queues, and PPD files without a queue; and sending jobs to them.
#pragma once

#include "platform/files/byte_sink.h"
#include "platform/printing/PMTicket.h"

using PMPrinter = struct OpaquePMPrinter*;

inline constexpr OSStatus kPMNoDefaultPrinter = -30872;
inline constexpr OSStatus kPMNoSuchPrinter = -30898;
inline constexpr OSStatus kPMUnusableDescription = -30897;  // the printer's PPD cannot be read or parsed
inline constexpr OSStatus kPMServerNotResponding = -30895;
inline constexpr OSStatus kPMFilterFailed = -30894;  // a filter ended with an error, or wrote nothing
inline constexpr OSStatus kPMCannotWriteOutput = -30893;
inline constexpr OSStatus kPMJobNotTaken = -30892;     // by the queue, or not as a whole
inline constexpr OSStatus kPMPrinterChanged = -30891;  // the queue's PPD is another than when the printer was opened

#define kPMPPDDescriptionType CFSTR("PMPPDDescriptionType")

/// A printer that is known by its PPD file alone. kPMUnusableDescription, with the reason in PMGetLastErrorText, for
/// a file that is missing or no PPD.
OSStatus PMPrinterCreateFromPPDFile(CFURLRef ppd, PMPrinter* printer);
/// The printer of a CUPS queue ("queue") or of an instance of one that the user has saved ("queue/instance"), its PPD
/// fetched from the server. kPMNoSuchPrinter, kPMServerNotResponding or kPMUnusableDescription, with the reason in
/// PMGetLastErrorText. May block for some seconds, never longer.
OSStatus PMPrinterCreateFromPrinterID(CFStringRef printerID, PMPrinter* printer);
/// A printer as a job finds it that is on its way through the print server's filters: known by its PPD file, with the
/// job's options, as a filter gets them, in the place of what is saved for a queue. kPMUnusableDescription as above;
/// paramErr, with the reason alone in PMGetLastErrorText, for settings among the options that cannot be read.
OSStatus PMPrinterCreateForJob(CFURLRef ppd, CFStringRef options, PMPrinter* printer);
OSStatus PMPrinterRetain(PMPrinter printer);
OSStatus PMPrinterRelease(PMPrinter printer);

/// Why this thread's last call of this header failed: one line that names the file or queue; lent, null when it did not
/// fail.
CFStringRef PMGetLastErrorText();

/// Asks the user for the name and password that the print server `server` (its host name) wants: new strings in *user
/// and *password. `proposal` is the user's name as far as it is known; with `isAgain` the server has not accepted what
/// was given last. False when the user gives none.
using PMPasswordProc = Boolean (*)(CFStringRef server, CFStringRef proposal, Boolean isAgain, CFStringRef* user,
                                   CFStringRef* password, void* context);
/// Whom to ask in this program, in the thread that called a function of this header; null, as it is at first, for a
/// question on the terminal. What is given is kept in memory only.
void PMServerSetPasswordProc(PMPasswordProc ask, void* context);

/// Begins to ask the server for a queue or an instance of one (null: for the user's default one) that is about to be
/// opened: the next PMServerCopyDefaultPrinterID and PMPrinterCreateFromPrinterID wait for what is left. Does not
/// block.
void PMServerAskAhead(CFStringRef printerID, UInt32 timeoutMilliseconds);

/// Where the user prints by default: a new string, the name of a queue or of an instance. kPMNoDefaultPrinter, or
/// kPMServerNotResponding when no server answers in time.
OSStatus PMServerCopyDefaultPrinterID(UInt32 timeoutMilliseconds, CFStringRef* printerID);

/// Begins to ask the server for its queues, and goes on while the caller does something else; not at all when the list
/// is released before.
using PMPrinterList = struct OpaquePMPrinterList*;
OSStatus PMPrinterListBegin(UInt32 timeoutMilliseconds, PMPrinterList* list);
/// Whether there is an answer, or none any more.
Boolean PMPrinterListIsComplete(PMPrinterList list);
/// A new array of the names of the queues, each followed by its instances ("queue/instance"), the default one first.
/// Once for each list; waits until it is complete. kPMServerNotResponding when no server answers in time.
OSStatus PMPrinterListCopyPrinterIDs(PMPrinterList list, CFArrayRef* printerIDs);
void PMPrinterListRelease(PMPrinterList list);

/// The name of the queue or instance, or the PPD's short nickname for a printer without a queue; lent.
CFStringRef PMPrinterGetName(PMPrinter printer);
/// The name of the queue or instance; lent, null for a printer without a queue.
CFStringRef PMPrinterGetID(PMPrinter printer);
/// The PPD's "Manufacturer", lent; the empty string when it has none.
CFStringRef PMPrinterGetMaker(PMPrinter printer);
/// The address of the printer's PPD; lent. paramErr for another type than kPMPPDDescriptionType.
OSStatus PMPrinterGetDescriptionURL(PMPrinter printer, CFStringRef type, CFURLRef* url);

/// Puts what the printer does by default into the tickets, leaving alone what they hold already: the PPD's marked
/// defaults, for a queue its own and what the user has saved for it (lpoptions), in the PPD dictionary; the copies,
/// page range, orientation and page options that are saved there. Print settings that hold nothing yet also get the
/// items that are saved there and that no option stands for (PMPrinterGetSavedSettings). Installable options (OptionN)
/// are not settings and stay out. What else is saved for a queue goes with its jobs by itself.
OSStatus PMPrinterWriteDefaultSettings(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat);

/// What people call a setting: new references to the display texts of a main keyword and of one of its options. A
/// custom paper size is told with its numbers ("200 × 300 mm"), a custom passcode never. kPMKeyNotFound, and nothing
/// made, for a keyword or option that the printer does not have.
OSStatus PMPrinterCopySettingTitles(PMPrinter printer, CFStringRef mainKeyword, CFStringRef option, CFStringRef* title,
                                    CFStringRef* optionTitle);

/// Whether the printer has the main keyword and that option of it, a custom one included. Leaves no error text.
Boolean PMPrinterHasSetting(PMPrinter printer, CFStringRef mainKeyword, CFStringRef option);

/// Whether a setting holds what nobody else may see, and no message may show: by the words of its key, or because it
/// takes a passcode or password of the printer (which may be null).
Boolean PMSettingIsSecret(PMPrinter printer, CFStringRef key);

/// Makes the tickets' PPD dictionary, copies and orientation the user's own defaults of the printer's queue
/// (lpoptions(1)), with which every program prints: what differs from the queue's defaults is kept, and what is the
/// same is forgotten. A passcode, a page range and what no other program could ask for are left out, and what the user
/// keeps there of other options and destinations stays. The tickets as PMPrinterPrintWithFile takes them;
/// kPMNoSuchPrinter for a printer without a queue, kPMCannotWriteOutput.
OSStatus PMPrinterSaveDefaultSettings(PMPrinter printer, PMTicketRef printSettings, PMTicketRef pageFormat);

// What else is saved with an instance's options, as one of them, and goes with each job of other programs.
#define kPMSavedSettingsNameKey CFSTR("Name")            // of the preset (string)
#define kPMSavedSettingsWatermarkKey CFSTR("Watermark")  // as it was stored (dictionary)
/// What is saved for the printer's instance, or came with the job, of settings that no option stands for: a dictionary
/// with these keys and, under kPDE_PMPrintSettingsKey, items of the print settings; lent, null for none.
CFDictionaryRef PMPrinterGetSavedSettings(PMPrinter printer);

/// What instances are called: a new string with a dash in the place of each character that no instance's name has;
/// empty when nothing is left.
CFStringRef PMCopyInstanceName(CFStringRef name);
/// Whether the printer's jobs go through the filter that reads such settings, so that they are worth saving.
Boolean PMPrinterTakesSavedSettings(PMPrinter printer);
/// Saves an instance of the printer's queue for the user (lpoptions(1)), or replaces the one of that name: the tickets'
/// PPD dictionary, copies, orientation and page options, and `settings` with the keys above (null for none). Secrets
/// are left out. kPMNoSuchPrinter for a printer without a queue, kPMCannotWriteOutput, paramErr for what no job can
/// have, or for settings that are too long.
OSStatus PMPrinterSaveInstance(PMPrinter printer, CFStringRef instance, PMTicketRef printSettings,
                               PMTicketRef pageFormat, CFDictionaryRef settings);
/// A new array of the user's instances ("queue/instance") whose settings have that name.
CFArrayRef PMCopyInstancesOfSettings(CFStringRef name);
/// Whether the user has anything saved under that name ("queue/instance").
Boolean PMHasInstance(CFStringRef instanceID);
/// Forgets an instance of the user's. kPMCannotWriteOutput.
OSStatus PMRemoveInstance(CFStringRef instanceID);
/// Gives the settings of an instance of the user's another name, and the instance too; one that is there under it is
/// replaced. kPMNoSuchPrinter when there is none, kPMCannotWriteOutput.
OSStatus PMRenameInstance(CFStringRef instanceID, CFStringRef newInstanceID, CFStringRef newName);

/// Describes the printer in a printer info ticket: its PPD, and the installed options chosen on top of the PPD's own
/// (main keyword to option keyword; may be null). ppdOpenCompiledPPDFromTicket and setInstallableOptions read it.
OSStatus PMPrinterWriteInfoTicket(PMPrinter printer, CFDictionaryRef installedOptions, PMTicketRef printerInfo);

// One side of a conflict, a dictionary.
#define kPMSettingKeywordKey CFSTR("Keyword")          // PPD main keyword (string)
#define kPMSettingOptionKey CFSTR("Option")            // its option (string)
#define kPMSettingIsInstalledKey CFSTR("IsInstalled")  // whether it says what is installed (boolean)
#define kPMSettingIsNothingKey CFSTR("IsNothing")      // whether that is nothing, as in "Not Installed" (boolean)

/// A new array of the conflicts between the settings of the ticket's PPD dictionary and what the printer info ticket
/// says is installed, each an array of its sides in the PPD's order. A conflict of one side is a custom paper size that
/// is out of the printer's limits. Keywords that the PPD dictionary lacks stand against nothing.
OSStatus PMPrinterCopyConflicts(PMPrinter printer, PMTicketRef printSettings, PMTicketRef printerInfo,
                                CFArrayRef* conflicts);
/// A new dictionary of the changes (main keyword to option) that end all conflicts; empty when none are known, or
/// needed. What is installed is no setting and stays. The settings of the keywords of `keep` (strings; may be null)
/// stay where something else can give way.
OSStatus PMPrinterCopyRemedy(PMPrinter printer, PMTicketRef printSettings, PMTicketRef printerInfo, CFArrayRef keep,
                             CFDictionaryRef* changes);
/// A new string: the option of a main keyword that stands against nothing, while all else stays; null when there is
/// none, or when the keyword says what is installed.
OSStatus PMPrinterCopyOptionWithoutConflict(PMPrinter printer, PMTicketRef printSettings, PMTicketRef printerInfo,
                                            CFStringRef mainKeyword, CFStringRef* option);

/// One paper size of a printer, in points, origin at the lower left corner.
struct PMPaper {
    CFStringRef name;   // the PPD's PageSize keyword
    CFStringRef title;  // its display text
    double width;
    double height;
    double left, bottom, right, top;  // the imageable area
};
/// The number of paper sizes of the printer, the "Custom" pseudo size not counted.
CFIndex PMPrinterCountPapers(PMPrinter printer);
/// The paper size at a position; its strings are lent as long as the printer lives.
OSStatus PMPrinterGetIndPaper(PMPrinter printer, CFIndex index, PMPaper* paper);
/// The paper size that an option of PageSize stands for; one with its own numbers ("Custom.200x300mm") has no strings.
/// kPMKeyNotFound for any other.
OSStatus PMPrinterGetPaper(PMPrinter printer, CFStringRef option, PMPaper* paper);
/// A new string: the numbers of such a size for people ("200 × 300 mm"), those in points in the units of their country.
/// Null for any other option.
CFStringRef PMCopyCustomPaperText(CFStringRef option);

/// Custom page size limits of the PPD at a path, in points. False when it cannot be opened or has no custom sizes.
Boolean PMCopyCustomPaperLimits(const char* ppdPath, float* minWidth, float* minHeight, float* maxWidth,
                                float* maxHeight);

// Keys of the print settings ticket that the job itself is made from (numbers but for the title and the range).
#define kPMJobNameKey CFSTR("com.apple.print.JobInfo.PMJobName")
#define kPMCopiesKey CFSTR("com.apple.print.PrintSettings.PMCopies")
#define kPMPageRangeKey CFSTR("com.apple.print.PrintSettings.PMPageRange")  // "1-3,7"; absent for all pages
/// How pages are laid on their sheets, as options that CUPS knows (number-up, print-scaling and their kin): a
/// dictionary of strings.
#define kPMPageOptionsKey CFSTR("com.tavro.print.PrintSettings.PageOptions")
/// The digits without which the printer does not print the job. With the item, also an empty one, the job is a secret
/// one or none.
#define kPMJobPasscodeKey CFSTR("com.tavro.print.JobInfo.Passcode")
/// Whose job it is, where that is somebody else than the user of this process.
#define kPMJobOwnerKey CFSTR("com.tavro.print.JobInfo.Owner")
/// "HH:MM" in UTC, the next of which a queue waits for; hours from 24 on are those of the next day. A job in a file has
/// nobody who could wait.
#define kPMJobHoldUntilTimeKey CFSTR("com.apple.print.JobInfo.PMJobHoldUntilTime")
// Keys of the page format ticket.
#define kPMOrientationKey CFSTR("com.apple.print.PageFormat.PMOrientation")  // 1 portrait, 2 and 3 landscape
#define kPMUnadjustedPaperRectKey CFSTR("com.apple.print.PageFormat.PMUnadjustedPaperRect")  // top left bottom right

/// Whether the printer reads PostScript, and no filter of its own makes its jobs.
Boolean PMPrinterReadsPostScript(PMPrinter printer);

/// A new string: the PostScript that chooses an option of a main keyword in a document, between its comments; of a
/// custom paper size with its numbers. Without an option the PPD's own default is chosen. kPMKeyNotFound, and nothing
/// made, for what the printer does not have, or has as a command that stands before the document.
OSStatus PMPrinterCopyOptionCode(PMPrinter printer, CFStringRef mainKeyword, CFStringRef option, CFStringRef* code);

/// Writes PostScript of the pages of an open PDF, as large as they are, for any printer: comments by the Document
/// Structuring Conventions, nothing of a printer's own. `resolution` is that of pictures ("600dpi"); `document` is what
/// messages name. kPMFilterFailed, or kPMCannotWriteOutput when `output` took no more, without a reason.
OSStatus PMWritePostScript(int pages, CFURLRef document, CFStringRef resolution, ByteSink* output);

/// Whether the installed filters make a PDF of documents of a MIME type ("image/png").
Boolean PMCanWritePDF(CFStringRef contentType);
/// Writes a PDF of an open document of such a type, through these filters. What has no paper of its own, a text or a
/// picture, is laid on paper of that size in points. `document` is what messages name. Failures as above.
OSStatus PMWritePDF(int file, CFURLRef document, CFStringRef contentType, double width, double height,
                    ByteSink* output);
/// The same by one program that takes arguments as filters do; `setting` is handed to it as its options.
OSStatus PMWritePDFByProgram(int file, CFURLRef document, CFStringRef contentType, CFStringRef program,
                             CFStringRef setting, ByteSink* output);

/// The pages of a job: sides of its sheets in their order, as large as their paper. Nothing is done to them any more.
struct PMJobPages {
    int file;               // the descriptor of an open file, which is read from its beginning
    Boolean arePostScript;  // as PMWritePostScript writes it; else a PDF
    CFIndex count;
    CFURLRef document;  // what was printed: the job's name, and what messages name
};

/// Writes the job as the printer reads it to a file: the CUPS filters with the PPD dictionary's pairs and the copies as
/// options, and what else is saved for the printer's queue; no server is needed. Blocks until it is written; the file
/// is replaced whole and is private to the user. A passcode goes by no command line, message or file of others.
/// paramErr for settings that no job can have (copies outside 1 to 9999, a malformed page range, control characters in
/// an option, or quotation marks where it becomes a printer command, a passcode that is not 4 to 10 ASCII digits or
/// that the printer has no use for, whichever way it is asked for), kPMFilterFailed, kPMCannotWriteOutput; always with
/// the reason.
OSStatus PMPrinterWriteJobToURL(PMPrinter printer, PMTicketRef printSettings, const PMJobPages* pages,
                                CFURLRef destination);
/// Writes the same to `output`; kPMCannotWriteOutput without a reason when it took no more.
OSStatus PMPrinterWriteJob(PMPrinter printer, PMTicketRef printSettings, const PMJobPages* pages, ByteSink* output);
/// Sends the same job to the printer's queue: the pages with their options, which the server counts, or, with a
/// passcode, the PostScript that a file would get. *jobID is the server's number of the job. *obstacle, a new string,
/// is why the job waits in its queue for now, as in one that is stopped; null when there is nothing that holds it up.
/// Nothing is sent to a queue that takes no jobs, or that has another PPD by now: kPMJobNotTaken, kPMPrinterChanged.
/// kPMNoSuchPrinter for a printer without a queue or whose queue is gone, kPMServerNotResponding, and the failures of a
/// job in a file.
OSStatus PMPrinterSendJob(PMPrinter printer, PMTicketRef printSettings, const PMJobPages* pages, SInt32* jobID,
                          CFStringRef* obstacle);
/// Ends what another thread is about with one of the last three: it fails, and has taken back what it had begun.
/// Nothing when there is none.
void PMCancelJob();
