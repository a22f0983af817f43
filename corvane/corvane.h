/// Everything that a host app needs, apart from a backend.
#pragma once

#include "corvane/agent_view/region.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/call_session_status.h"
#include "corvane/bridge/product_cart_status.h"
#include "corvane/platform/capture/capture_authorization.h"
#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/views/ui_view.h"
#include "corvane/platform/views/ui_window.h"
#include "corvane/platform/web/web_error.h"
#include "corvane/product/product.h"
#include "corvane/product/product_spec_error.h"
#include "corvane/product/variation_factory.h"
