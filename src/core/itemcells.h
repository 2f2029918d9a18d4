// Which cells of ModelFlags a menu item marks when its arrays have been defined.
#pragma once

namespace core {

class ArrayStore;
class ModelFlags;

// Marks the item that edits parameter `number` as defined, as leaving the worksheet with Yes does;
// a parameter without an item changes nothing. The tracer is taken from where it was defined last.
void mark_item_defined(ModelFlags& flags, int number);

// An item with several arrays (the flow field, the wells) has them all once it is defined: creates
// those of the item of parameter `number` that are missing, with their defaults.
void create_arrays_of_item(ArrayStore& store, int number);

} // namespace core
