// What the model says about one attribute: its type, default, bounds and kind. Part of Model.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace VokGen::Model {

struct Attribute;
struct ConstantsType;
struct EntityType;
struct Enumerator;
struct EnumType;
struct ExternalType;
struct Module;
struct RecordType;
struct TypeDeclaration;
struct ValueType;

enum class TypeKind {
   boolean,
   number, ///< u8, u16, u32, u64
   real, ///< double
   text, ///< Corvo::String
   seconds, ///< Vok::Seconds
   duration, ///< Corvo::Duration
   enumeration,
   value,
   entity, ///< of children, references and reference arguments only
   external ///< of parameters and results only
};

/// A resolved use of a type.
struct Type {
   TypeKind kind = TypeKind::boolean;
   unsigned bits = 0; ///< Of a number or enumeration: 8, 16, 32 or 64.
   /// As reflection names it: "bool", "u32", "double", "Corvo::String", "FlowTracking::FtId".
   std::string fullName;
   /// "bool", "std::uint32_t", "double", "Corvo::String", "FlowTracking::FtId"; of an entity the
   /// bare type, without any pointer.
   std::string cppName;
   const EnumType * enumeration = nullptr;
   const ValueType * value = nullptr;
   const EntityType * entity = nullptr;
   const ExternalType * external = nullptr;

   /// Numbers, truth values, enumerations: given and taken by value; all else as `const T &`.
   bool scalar() const;
   bool isNumber() const { return kind == TypeKind::number; }
   bool isText() const { return kind == TypeKind::text; }
   bool hashable() const;
   bool ordered() const;
   bool textable() const;
   /// Itself where it is scalar or framework type; for a value of one field the type of that field,
   /// and so on inwards. Null for a value of several fields.
   const Type * innermost() const;
   /// Largest number that the width holds; 0 for what is neither number nor enumeration.
   std::uint64_t largest() const;
   bool operator==( const Type & other ) const { return fullName == other.fullName; }
};

/// A value that is known when the generator runs.
struct Constant {
   enum class Kind {
      boolean,
      integer,
      real, ///< Infinity too.
      text,
      enumerator,
      ownDefault ///< What the type's default constructor makes.
   };
   Kind kind = Kind::ownDefault;
   bool boolean = false;
   std::uint64_t integer = 0;
   double real = 0;
   std::string text; ///< Raw bytes, as they were meant.
   const Enumerator * enumerator = nullptr;
};

/// One term of an expression: a number, a constant or an enumerator.
struct Term {
   bool subtracted = false;
   std::uint64_t integer = 0; ///< Its value, whatever it is.
   const Attribute * constant = nullptr; ///< The constant that it names.
   const Enumerator * enumerator = nullptr; ///< The enumerator that it names.
};

/// What stands in the definition for a default, a bound or a constant.
struct Expression {
   Constant value;
   /// As messages print it: names fully qualified ("FlowTracking::FtId::minFtId"), sums in
   /// parentheses ("(FlowTracking::InstanceId::max + 1)"), numbers as written, texts quoted and
   /// escaped.
   std::string text;
   /// Its terms in written order where it is a number or a name; several in a sum.
   std::vector< Term > terms;

   /// The constant that it names and is nothing but; null otherwise.
   const Attribute * namedConstant() const;
};

enum class CheckTime {
   always, ///< construct, parse, mutate
   onSet, ///< in the mutator only
   validated, ///< by validate() only, with a message of its own
   never
};

/// `in lower..upper`. The numbers compared are those of the field itself, or for an attribute of a
/// value type those of its innermost field.
struct Bounds {
   CheckTime time = CheckTime::always;
   Expression lower;
   Expression upper;
   /// The message of the exception: "<Type>::<field> < <lower> or > <upper> not allowed", or the
   /// text after `validated`.
   std::string message;
   std::optional< std::uint64_t > except; ///< Valid although outside; `validated` only.
   /// Whether a number of the type that comes in can violate the bound at all.
   bool lowerCanFail = false;
   bool upperCanFail = false;
};

/// `max bound message "text"` of a string field: most bytes.
struct TextLimit {
   Expression most;
   std::string message;
};

enum class AttributeKind {
   plain, ///< Of an entity an attribute, of a value a field.
   optional,
   constant,
   constructorArgument, ///< Of an entity, or a field in `( … )` of a value.
   derived,
   flag, ///< A bit of a field of the same value.
   function, ///< Of an entity or a constants type; takes an id.
   instantiate,
   map,
   set,
   children,
   child,
   references
};

enum class KeyOrigin {
   external, ///< `map K -> V`: given beside the value.
   member, ///< `map V by x`, `children T by x`, `references T by x`: read out of the member.
   element ///< `set T`: the element is the key.
};

enum class SecondLookup {
   none,
   same,
   optional
};

/// A parameter of a function. It has no documentation of its own: the function's says it.
struct Parameter {
   std::string name;
   Type type;
};

/// A function. Its definition is written by hand, in the .cpp beside the definition file, unless it
/// gives a text.
struct Function {
   std::string name;
   std::string documentation;
   std::vector< Parameter > parameters;
   std::optional< Type > result; ///< None for a function that returns nothing.
   std::optional< std::string > text = {}; ///< What it gives, always.
   bool isStatic = false; ///< `static method`, and every function of a constants type.
   bool mutating = false; ///< May change its entity; all others are const.
};

/// What happens to a constructor argument when a child of that key exists already.
enum class Reinstantiation {
   key, ///< It is the key: equal by itself.
   refuse, ///< Another value is refused with Corvo::ReinstantiationException.
   update, ///< Another value goes through the child's mutator.
   replace ///< Another name replaces the child (single children).
};

struct ChildArgument {
   const Attribute * argument = nullptr;
   Reinstantiation rule = Reinstantiation::refuse;
};

/// Of map, set, children, child and references. The member's type is the attribute's.
struct Collection {
   bool ordered = false;
   KeyOrigin origin = KeyOrigin::external;
   Type key; ///< Of a set the element's type; unused for `child`.
   /// The field of the value, or the constructor argument of the entity, that is the key.
   const Attribute * keyAttribute = nullptr;
   /// `get same`, `get optional`: there is an xGet().
   SecondLookup secondLookup = SecondLookup::none;
   bool constructed = false; ///< `child T constructed`: made by the owner's constructor.
   /// Constant that is mixed into the hash seed; fixed by the names of type and attribute.
   std::uint32_t hashSalt = 0;
   /// Of children and child: the member's constructor arguments in order.
   std::vector< ChildArgument > arguments;
};

/// `flag x : bit n of word [mask m]`.
struct FlagBit {
   const Attribute * word = nullptr;
   unsigned bit = 0;
   const Attribute * mask = nullptr; ///< The constant named by `mask`; null without one.
   std::uint64_t maskValue() const { return std::uint64_t( 1 ) << bit; }
};

/// An attribute of an entity, a field of a value, or a member of a constants type.
struct Attribute {
   AttributeKind kind = AttributeKind::plain;
   unsigned id = 0;
   std::string name;
   std::string documentation;
   const RecordType * owner = nullptr; ///< The type that declares it.
   /// Of plain, optional, constant, argument, derived: the value's, an optional's without the
   /// Optional. Of a flag bool. Of a map the value's, of a set the element's, of children the
   /// child's, of references and a reference argument the entity's. Of a function its result where
   /// it has one.
   Type type;

   /// What a fresh entity or value holds, for plain, fields and arguments of values: always there,
   /// be it Constant::ownDefault. Of a constant its value.
   Expression value;
   bool defaultStated = false; ///< The definition states the default.

   std::optional< Bounds > bounds;
   std::optional< TextLimit > textLimit;
   std::optional< Type > builtFrom; ///< `from u32`: constructors take this wider number.
   /// Of an optional: `empty n`, one word where n is none.
   std::optional< std::uint64_t > emptyWord;
   std::optional< FlagBit > flag;
   std::optional< Collection > collection;
   std::optional< Function > function; ///< Of a function attribute.

   bool counter = false; ///< has an xInc()
   bool validated = false; ///< The entity's constructor validates the default.
   bool settable = false; ///< A constructor argument with a mutator.
   bool isIdentity = false; ///< The plain name, or `identity`.
   bool isReference = false; ///< An argument `reference T`: Corvo::Ptr< const T >.

   /// "FlowTracking::Config::sftAgentCount"
   std::string fullName() const;
   /// The name in reflection: "nameString" for a plain name, else `name`.
   std::string reflectedName() const;
   /// The mutator of a plain attribute or field exists (not of a fixed value), or of a settable
   /// argument.
   bool hasMutator() const;
   bool isCollection() const { return collection.has_value(); }
};

} // namespace VokGen::Model
