#include "core/mod_of_grobal_var.h"

Shared shared;
