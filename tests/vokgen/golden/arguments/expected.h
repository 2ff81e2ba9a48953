// Made by vokgen from Sample.vok. Do not edit.
//
// Constructor arguments and identities.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Nothing;
class Host;
class Slot;
class Line;
class Group;
class Binding;

// ---- Enumerations -------------------------------------------------------------------------------

/// How.
enum class Mode : std::uint8_t {
   slow = 0, ///< the default
};
using enum Mode;

VOK_EXPORT const Vok::EnumTable & vokEnumTable( Mode ) noexcept;
constexpr std::string_view vokEnumName( Mode ) noexcept
{
   return "Test::Mode";
}
/// The enumerator's name; a code without one ends the process by assertion.
inline const char * stringValue( Mode e ) { return Vok::Enumeration::name( e ); }
/// Reads one whole name. An unknown one throws Corvo::EnumRangeException and consumes
/// nothing.
inline void sequenceToValue( Vok::CharRange & range, Mode * value )
{
   Vok::Enumeration::read( range, value );
}
inline std::ostream & operator<<( std::ostream & out, Mode e )
{
   return out << stringValue( e );
}
/// The enumerator of a code or a name; throws Corvo::EnumRangeException where there is none.
inline Mode ModeInstance( unsigned code ) { return Vok::Enumeration::ofCode< Mode >( code ); }
inline Mode ModeInstance( std::string_view name )
{
   return Vok::Enumeration::ofName< Mode >( name );
}

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A name.
class VOK_EXPORT Label {
 public:
   Label() = default;
   /// From its stringValue.
   explicit Label( Corvo::String stringValue );
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Label( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Label( Log * log )
   {
      vokDecode( *log );
   }

   /// the text
   const Corvo::String & stringValue() const noexcept { return stringValue_; }
   void stringValueIs( const Corvo::String & v ) { stringValue_ = v; }

   /// Whether all fields are equal.
   bool isEq( const Label & other ) const;
   friend bool operator==( const Label & a, const Label & b ) { return a.isEq( b ); }
   /// Field by field, in declared order.
   friend bool operator<( const Label & a, const Label & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Label & v )
   {
      return Vok::ValueType< Label >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Label";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "stringValue", &Label::stringValue_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   Corvo::String stringValue_;
};

inline bool Label::isEq( const Label & other ) const
{
   return Vok::equalFields( *this, other );
}
inline bool operator<( const Label & a, const Label & b )
{
   return Vok::lessFields( a, b );
}

/// An identity whose text is computed.
class VOK_EXPORT Number {
 public:
   constexpr Number() noexcept = default;
   /// From its value.
   constexpr explicit Number( std::uint32_t value ) noexcept
         : value_( value )
   {
   }
   /// from its text
   explicit Number( const Corvo::String & text );
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Number( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Number( Log * log )
   {
      vokDecode( *log );
   }

   /// the number
   constexpr std::uint32_t value() const noexcept { return value_; }
   void valueIs( std::uint32_t v ) noexcept { value_ = v; }
   /// its text
   Corvo::String stringValue() const;

   /// Whether all fields are equal.
   constexpr bool isEq( const Number & other ) const;
   friend constexpr bool operator==( const Number & a, const Number & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Number & v )
   {
      return Vok::ValueType< Number >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Number";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Number::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 0;
};

constexpr bool Number::isEq( const Number & other ) const
{
   return Vok::equalFields( *this, other );
}

// ---- Entities -----------------------------------------------------------------------------------

// Entities are made by their factories and held through Corvo::Ptr. Of an attribute x, x() reads
// it and xIs( v ) stores it and tells the notifiees of the entity; where v equals what is stored
// it does nothing. Texts and values are given by reference, which holds until that attribute, of a
// map that member, changes; an optional is given as a copy.
//
// Of a collection, x() is a live view of it, valid as long as the entity, and the collection may
// be changed while it is iterated. x( key ) is the member: of a map the type's default where there
// is none, of a set whether it holds the key, of children and references the pointer or null.
// xDel( key ) deletes a member and returns it, of a set nothing; deleting what is not there is
// silent. xDelAll() deletes all and gives the memory back. Of children, xIs() makes the child or
// returns the one that exists under that key.

/// No argument, no name.
class VOK_EXPORT Nothing : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Nothing >;

   /// A new Nothing, without a parent.
   static Corvo::Ptr< Nothing > NothingIs();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   Nothing();
   ~Nothing() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate();
};

/// The same as Nothing::NothingIs().
inline Corvo::Ptr< Nothing > nothingFactory()
{
   return Nothing::NothingIs();
}

/// An identity that is a text.
class VOK_EXPORT Host : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Host >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId hostnameAttrId = 258;

   /// A new Host with this hostname, without a parent.
   static Corvo::Ptr< Host > HostIs( const Corvo::String & hostname );

   /// the identity, under another name
   const Corvo::String & hostname() const noexcept;

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Host( const Corvo::String & hostname );
   ~Host() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & hostname );
};

/// The same as Host::HostIs().
inline Corvo::Ptr< Host > hostFactory( const Corvo::String & hostname )
{
   return Host::HostIs( hostname );
}

/// An identity that is a value with a text.
class VOK_EXPORT Slot : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Slot >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId labelAttrId = 258;
   static constexpr Vok::AttrId weightAttrId = 259;

   /// A new Slot with this label and weight, without a parent.
   static Corvo::Ptr< Slot > SlotIs( const Label & label, std::uint16_t weight );

   /// the identity
   const Label & label() const noexcept;

   /// can be changed
   std::uint16_t weight() const noexcept;
   void weightIs( std::uint16_t v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   Slot( const Label & label, std::uint16_t weight );
   ~Slot() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Label & label, std::uint16_t weight );

   Label label_;
   std::uint16_t weight_;
};

/// The same as Slot::SlotIs().
inline Corvo::Ptr< Slot > slotFactory( const Label & label, std::uint16_t weight )
{
   return Slot::SlotIs( label, weight );
}

/// An identity that is a number.
class VOK_EXPORT Line : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Line >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId numberAttrId = 258;

   /// A new Line with this number, without a parent.
   static Corvo::Ptr< Line > LineIs( const Number & number );

   /// An identity that is a number.
   const Number & number() const noexcept;

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Line( const Number & number );
   ~Line() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Number & number );

   Number number_;
};

/// The same as Line::LineIs().
inline Corvo::Ptr< Line > lineFactory( const Number & number )
{
   return Line::LineIs( number );
}

/// A name, a constant argument, no factory.
class VOK_EXPORT Group : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Group >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId seqnoAttrId = 258;
   static constexpr Vok::AttrId instantiateAttrId = 259;

   /// A new Group with this name and seqno, without a parent.
   static Corvo::Ptr< Group > GroupIs( const Corvo::String & name, std::uint32_t seqno );

   /// A name, a constant argument, no factory.
   std::uint32_t seqno() const noexcept;

   /// a fresh one
   Corvo::Ptr< Group > instantiate() const;

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   Group( const Corvo::String & name, std::uint32_t seqno );
   ~Group() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name, std::uint32_t seqno );

   std::uint32_t seqno_;
};

/// No identity, a reference.
class VOK_EXPORT Binding : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Binding >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId modeAttrId = 258;
   static constexpr Vok::AttrId targetAttrId = 259;

   /// A new Binding with this mode and target, without a parent.
   static Corvo::Ptr< Binding > BindingIs( Mode mode, const Corvo::Ptr< const Group > & target );

   /// how
   Mode mode() const noexcept;

   /// counted, not owned
   const Corvo::Ptr< const Group > & target() const noexcept;

   /// A fresh one with the same constructor arguments.
   Corvo::Ptr< Binding > instantiate() const;

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   Binding( Mode mode, const Corvo::Ptr< const Group > & target );
   ~Binding() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( Mode mode, const Corvo::Ptr< const Group > & target );

   Mode mode_;
   Corvo::Ptr< const Group > target_;
};

/// The same as Binding::BindingIs().
inline Corvo::Ptr< Binding > bindingFactory( Mode mode, const Corvo::Ptr< const Group > & target )
{
   return Binding::BindingIs( mode, target );
}

// ---- Inline members -----------------------------------------------------------------------------

inline const Corvo::String & Host::hostname() const noexcept { return name(); }

inline const Label & Slot::label() const noexcept { return label_; }

inline std::uint16_t Slot::weight() const noexcept { return weight_; }
inline void Slot::weightIs( std::uint16_t v )
{
   Vok::Attribute::plainIs( *this, weightAttrId, weight_, v );
}

inline const Number & Line::number() const noexcept { return number_; }

inline std::uint32_t Group::seqno() const noexcept { return seqno_; }

inline Mode Binding::mode() const noexcept { return mode_; }

inline const Corvo::Ptr< const Group > & Binding::target() const noexcept { return target_; }

} // namespace Test

template<> struct std::hash< Test::Label > : Vok::ValueHash< Test::Label > {
};
template<> struct std::hash< Test::Number > : Vok::ValueHash< Test::Number > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
