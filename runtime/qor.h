/* The runtime library, whole: one header per area. */
#ifndef QOR_QOR_H
#define QOR_QOR_H

#include "runtime/array.h"
#include "runtime/array_functions.h"
#include "runtime/array_math.h"
#include "runtime/array_order.h"
#include "runtime/array_select.h"
#include "runtime/array_statistics.h"
#include "runtime/bridge.h"
#include "runtime/clock.h"
#include "runtime/dates.h"
#include "runtime/digest.h"
#include "runtime/encoding.h"
#include "runtime/error.h"
#include "runtime/files.h"
#include "runtime/format.h"
#include "runtime/guard.h"
#include "runtime/map.h"
#include "runtime/numbers.h"
#include "runtime/numbers_text.h"
#include "runtime/print.h"
#include "runtime/qorrt.h"
#include "runtime/record.h"
#include "runtime/regex.h"
#include "runtime/system.h"
#include "runtime/text.h"
#include "runtime/value.h"

#endif
