// The keys of a fax job's options: a dictionary in the print settings ticket.
//
// A key that is absent has the default that its row names, if any. Numbers are of the platform's index width and count
// menu items from 1, unless the row says otherwise.
#pragma once

#include "platform/foundation/CFString.h"

/// The ticket's items: the options, and the array of FaxRecipient dictionaries.
#define kFaxOptionsTicketKey CFSTR("com.tavro.print.FaxOptions")
#define kFaxRecipientListTicketKey CFSTR("com.tavro.print.FaxRecipientList")

inline constexpr bool kFaxDefaultConfirmationSheet = true;
inline constexpr CFIndex kFaxDefaultSendSpeed = 3;
inline constexpr CFIndex kFaxDefaultResolution = 2;
inline constexpr bool kFaxDefaultPrompt = true;
inline constexpr bool kFaxDefaultCoverSheet = false;

// How the fax is sent.
#define kFaxPrintConfirmationSheetProperty CFSTR("ConfirmationSheet")  // boolean; kFaxDefaultConfirmationSheet
#define kFaxSendSpeedProperty CFSTR("SendSpeed")                       // menu item; kFaxDefaultSendSpeed
#define kFaxResolutionProperty CFSTR("Resolution")                     // menu item; kFaxDefaultResolution
// Seconds since 1904-01-01 00:00 of the clock on the user's wall, every day having 86400 of them; else at once.
#define kFaxSendTimeProperty CFSTR("SendTime")            // 64-bit number
#define kFaxDialingPrefixProperty CFSTR("DialingPrefix")  // string of at most 4 dialing characters
#define kFaxCreditCardProperty CFSTR("CreditCard")        // string of at most 16 digits; never to be logged

// The questions that the list of recipients asks.
#define kFaxPromptDuplicateProperty CFSTR("PromptDuplicate")  // boolean; kFaxDefaultPrompt
#define kFaxPromptRemoveProperty CFSTR("PromptRemove")        // boolean; kFaxDefaultPrompt

// The cover sheet.
#define kFaxPrintCoverSheetProperty CFSTR("CoverSheet")                    // boolean; kFaxDefaultCoverSheet
#define kFaxCoverSheetNotesProperty CFSTR("CoverSheetNotes")               // string
#define kFaxCoverShowSenderProperty CFSTR("ShowSender")                    // boolean
#define kFaxCoverShowRecipientsProperty CFSTR("ShowRecipients")            // 1 none, 2 the list, 3 custom text
#define kFaxCoverCustomRecipientTextProperty CFSTR("CustomRecipientText")  // string
#define kFaxCoverShowWatermarkProperty CFSTR("ShowWatermark")              // boolean
#define kFaxCoverWatermarkNameProperty CFSTR("WatermarkName")              // string, of a stored watermark
#define kFaxCoverImageNameProperty CFSTR("ImageName")                      // string, of a stored image; none
#define kFaxCoverSizeProperty CFSTR("Size")                                // menu item
#define kFaxCoverImageNameProperty CFSTR("ImageName")                      // string, of a stored image
#define kFaxCoverLocalizedNotesLabel CFSTR("LocalizedNotesLabel")          // strings in the user's language,
#define kFaxCoverLocalizedFromLabel CFSTR("LocalizedFromLabel")            // because the driver has none
#define kFaxCoverLocalizedPhoneLabel CFSTR("LocalizedPhoneLabel")
#define kFaxCoverLocalizedFaxLabel CFSTR("LocalizedFaxLabel")
#define kFaxCoverLocalizedToLabel CFSTR("LocalizedToLabel")

// The sender; strings.
#define kFaxSenderNameProperty CFSTR("SenderName")
#define kFaxSenderOrganizationProperty CFSTR("SenderOrganization")
#define kFaxSenderEmailAddressProperty CFSTR("SenderEmailAddress")
#define kFaxSenderFaxNumberProperty CFSTR("SenderFaxNumber")
#define kFaxSenderPhoneNumberProperty CFSTR("SenderPhoneNumber")
