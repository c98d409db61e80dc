// Everything a host needs, in one include.
// Room: check. Used by: hosts.
// Invariant: brings in every public header.
#pragma once

#include "brindle/automation.h"
#include "brindle/automation_classes.h"
#include "brindle/blowfish.h"
#include "brindle/check.h"
#include "brindle/collections.h"
#include "brindle/component.h"
#include "brindle/console_user_interface.h"
#include "brindle/dbf.h"
#include "brindle/dialog.h"
#include "brindle/environment.h"
#include "brindle/error_place.h"
#include "brindle/interpreter.h"
#include "brindle/limits.h"
#include "brindle/stop_request.h"
#include "brindle/text.h"
#include "brindle/user_interface.h"
#include "brindle/variable.h"
#include "brindle/version.h"
#include "brindle/window_user_interface.h"
