// How values of a type stand in JSON: found by reflection alone.
#pragma once

#include "Vok/Vok.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace FlowtrackJson {

enum class Form : std::uint8_t {
   truth, ///< true or false
   number, ///< a whole number of at most 32 bits
   bigNumber, ///< one of 64 bits, as a text: readers of JSON lose digits
   real, ///< a number; inf, -inf and nan as texts
   text,
   choice, ///< an enumerator by name
   flags, ///< an array of the names of the bits that are set
   object ///< a value of several fields, or one that holds a collection
};

/// One bit of a word. Those that no flag has are called bit0, bit1 and so on.
struct Flag {
   std::string name;
   std::string_view documentation;
   unsigned bit;
};

/// How a value stands in JSON, and in what bounds. A value of one field stands as its field does.
struct Shape {
   Form form = Form::text;
   std::string_view typeName = {}; ///< as attributes name it
   const Vok::TypeData * type = nullptr; ///< null for built-in ones
   const Vok::TypeData * choices = nullptr; ///< the enumeration, perhaps inside of the type
   /// Of numbers: what mutators and constructors take, whatever else the definition calls bounds.
   std::uint64_t least = 0;
   std::uint64_t most = 0;
   std::vector< Flag > flags = {}; ///< in order of the bits
   bool hand = false; ///< a text that its type reads by rules of its own, such as an address
   std::string_view holder = {}; ///< of the innermost field that has the bounds: its type's name
};

/// The shape of a type by the name that attributes give it. Stays for the life of the program.
const Shape & shapeOf( std::string_view typeName );

/// The shape of a field of a value type, its own bounds and flags counted in. Stays as well.
const Shape & shapeOf( const Vok::TypeData & owner, const Vok::AttributeData & field );

/// The shape of an attribute of an entity type, likewise.
const Shape & shapeOfAttribute( const Vok::TypeData & owner, const Vok::AttributeData & attribute );

/// The fields that a value has in JSON, in declared order: no constants, and of flags their word.
std::vector< const Vok::AttributeData * > fieldsOf( const Vok::TypeData & type );

/// Whether an attribute is part of a tree's content: no constant, derived value or function.
bool isContent( const Vok::AttributeData & attribute );

/// The name of an attribute in JSON: its own; `name` for the name of an entity.
std::string_view jsonName( const Vok::AttributeData & attribute );

/// The attribute of that JSON name, or null; whether it is content is another question.
const Vok::AttributeData * attributeOf( const Vok::TypeData & type, std::string_view jsonName );

/// An entity type by its full name.
const Vok::TypeData & entityType( std::string_view name );

/// The constructor arguments of an entity but for its key in a collection, in order.
std::vector< const Vok::AttributeData * > argumentsBeside(
      const Vok::TypeData & type, std::string_view keyField );

/// The identity of an entity type among its constructor arguments, or null.
const Vok::AttributeData * identityOf( const Vok::TypeData & type );

/// Whether a constructor argument refers to another entity.
bool isReference( const Vok::AttributeData & argument );

/// A new entity of a type, to see what is there from the start; null for a type that refers to
/// others in its arguments. Stays for the life of the program; do not change it for good.
Vok::Entity * freshOf( const Vok::TypeData & type );

/// The text of the value that a type has at first.
std::string defaultTextOf( const Shape & shape );

/// Texts as keys and sets are put in order: numbers by value, others byte by byte.
bool keyLess( std::string_view a, std::string_view b );

} // namespace FlowtrackJson
