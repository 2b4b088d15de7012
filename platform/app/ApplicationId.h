/// The application's id, defined by the program's build; null where it gives none.
#pragma once

extern "C" const char orbis_app_id[] __attribute__((weak));
