// What the printer's controller is told of a job: what it does by itself, such as a fax or a job that it keeps, and
// what lies in the stack, so that its operator can see to it. docs/job-instructions.md lists all names.
#pragma once

#include "driver/instructions/read_instructions.h"
#include "driver/job/job_header.h"
#include "driver/plan/sheet_plan.h"

/// The instructions of a job and of the sheets that come out of it, in the order of the document that lists them. A
/// plain job has but its kind. Never a secret.
Instructions controllerInstructions(const JobInstructions& job, const SheetPlan& plan);

/// What the controller must know of a fax and nobody else may: for the job itself, and for nothing that shows or keeps
/// it.
Instructions secretInstructions(const JobSecrets& secrets);

/// Whether there is something that only the controller can do. Such a job carries its instructions always; others when
/// the user has them sent and there is more to say than the kind. The finishing menu and the colors are none of them on
/// a printer that has options of its PPD for these.
bool needsController(const JobInstructions& job, bool finishesByOptions, bool hasColorOptions);
