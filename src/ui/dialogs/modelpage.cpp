#include "ui/dialogs/modelpage.h"
