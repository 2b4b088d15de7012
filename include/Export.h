/// Marks what the shared library hands out to other modules.
#pragma once

#define TESSEL_API __attribute__((visibility("default")))
