// The tree of one definition file: what was written, and where. Nothing is looked up yet.
#pragma once

#include "vokgen/Source.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace VokGen::Ast {

/// A name, or several joined by `::`.
struct Name {
   std::string text;
   Range range;

   bool empty() const { return text.empty(); }
};

/// The documentation of a declaration: lines joined by blanks, paragraphs by line ends.
struct Documentation {
   std::string text;
};

struct Term {
   enum class Kind {
      integer,
      name
   };
   Kind kind = Kind::integer;
   bool subtracted = false;
   std::uint64_t integer = 0;
   Name name; ///< Its text is the digits where it is a number.
};

/// What may stand for a value.
struct Expression {
   enum class Kind {
      integer,
      real,
      text,
      word, ///< `true`, `false`, `infinity`, or the name of a constant or enumerator
      sum ///< In parentheses, even with one term.
   };
   Kind kind = Kind::integer;
   Range range;
   bool negative = false; ///< Of integer, real and `infinity`.
   std::uint64_t integer = 0;
   double real = 0;
   std::string text; ///< Of a text its bytes; of a number its digits; of a word the name.
   std::vector< Term > terms;
};

enum class OptionKind {
   defaultValue, ///< `= first`
   from, ///< `from type`
   bounds, ///< `in first..second` and what follows
   most, ///< `max first message "text"`
   counter,
   validated, ///< The word alone, without bounds.
   settable,
   empty, ///< `empty first`
   get, ///< `get same`, `get optional`
   constructed,
   unnumbered
};

enum class BoundsTime {
   always,
   onSet,
   validated,
   unchecked
};

struct Option {
   OptionKind kind = OptionKind::defaultValue;
   Range range;
   Expression first;
   Expression second;
   Name type;
   BoundsTime time = BoundsTime::always;
   std::string text;
   std::optional< Expression > except;
   bool optionalLookup = false;
};

struct Parameter {
   Name name;
   Name type;
};

enum class MemberKind {
   plain,
   optional,
   derived,
   map,
   set,
   children,
   child,
   references,
   constant,
   flag,
   function,
   method,
   constructor,
   instantiate,
   argument ///< In the parentheses after a type's name.
};

struct Member {
   MemberKind kind = MemberKind::plain;
   Range range;
   Range kindRange; ///< The words that say what kind it is; the name where no word does.
   Name name;
   Documentation documentation;
   bool broken = false; ///< What follows the name has been reported already.

   Name type; ///< Of the value, the element, the child; of a function its result.
   std::optional< Name > key; ///< `K` of `map K -> V`
   std::optional< Name > by;
   bool ordered = false;
   std::vector< Option > options;

   std::vector< Parameter > parameters;
   std::optional< std::string > text = {}; ///< Of a function: what it gives, with its place.
   Range textRange;
   bool isStatic = false;
   bool mutating = false;

   std::uint64_t bit = 0; ///< Of a flag, with the places of its parts.
   Range bitRange;
   Name word;
   std::optional< Name > mask;

   bool isIdentity = false; ///< Of an argument, as are the next three.
   bool isReference = false;
   bool isBareName = false;
   bool inheritsDocumentation = false; ///< Separated by a comma: the line documents the type.
};

struct Enumerator {
   Name name;
   std::uint64_t code = 0;
   Range codeRange;
   Range range;
   Documentation documentation;
};

enum class TypeKind {
   enumeration,
   constants,
   value,
   entity
};

struct Modifier {
   std::string word; ///< "by hand text" for that one.
   Range range;
   std::optional< std::string > text = {}; ///< Of "by hand text": the default's text.
};

struct Type {
   TypeKind kind = TypeKind::value;
   Range range; ///< The header, up to the brace.
   Name name;
   std::string nameSpace; ///< Such as "A::B"; empty outside any.
   Documentation documentation;
   bool broken = false; ///< Its header could not be read.
   /// Something in it was reported and left out: a name missing from it may have been there.
   bool incomplete = false;

   Name width; ///< Of an enumeration.
   std::vector< Enumerator > enumerators;

   bool hasArguments = false; ///< Parentheses follow the name.
   Range argumentsRange;
   std::vector< Modifier > modifiers;
   std::optional< Name > base;
   std::vector< Name > checks;
   std::vector< Member > members; ///< Arguments first.
   std::vector< Type > enums;
};

struct FreeFunction {
   Member function;
   std::string nameSpace;
};

/// `extern A::B in "header";`
struct External {
   Name name;
   std::string nameSpace;
   std::string header;
   Range range;
   Range headerRange;
   Documentation documentation;
};

struct Module {
   const SourceFile * file = nullptr;
   Name name;
   Documentation documentation;
   std::vector< Name > uses;
   std::vector< Name > namespaces; ///< As opened, each with its full name.
   std::vector< External > externals;
   std::vector< Type > types;
   std::vector< FreeFunction > functions;
   /// A declaration was reported and left out whole: a name missing from it may have been there.
   bool incomplete = false;
};

} // namespace VokGen::Ast
