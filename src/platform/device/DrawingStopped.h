// How a drawing that is not to go on ends. Who wants it to end is the caller's business.
#pragma once

/// Thrown out of the call that was told so; what has been drawn is of no use.
struct DrawingStopped {};
