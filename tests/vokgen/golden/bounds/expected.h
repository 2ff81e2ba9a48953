// Made by vokgen from Sample.vok. Do not edit.
//
// Bounds that are checked always, in mutators, by validate(), and never.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Root;

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// Checked always.
class VOK_EXPORT Level {
 public:
   constexpr Level() noexcept = default;
   /// Throws Corvo::RangeException unless value is in low (1) to top (10).
   constexpr explicit Level( std::uint32_t value )
         : value_( value )
   {
      checkValue( value );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Level( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Level( Log * log )
   {
      vokDecode( *log );
   }

   /// the level, in steps
   constexpr std::uint32_t value() const noexcept { return value_; }
   /// Throws Corvo::RangeException unless v is in low (1) to top (10). It keeps its value then.
   void valueIs( std::uint32_t v )
   {
      if ( v != value_ ) {
         checkValue( v );
         value_ = v;
      }
   }
   /// lower bound
   static constexpr std::uint32_t low() noexcept { return 1; }
   /// upper bound
   static constexpr std::uint32_t top() noexcept { return 10; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Level & other ) const;
   friend constexpr bool operator==( const Level & a, const Level & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Level & v )
   {
      return Vok::ValueType< Level >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Level";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkValue( std::uint32_t v )
   {
      if ( v < 1 || v > 10 ) {
         Corvo::RangeException::throwException(
               "Test::Level::value < Test::Level::low or > Test::Level::top not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< Level, std::uint32_t >{ "value", &Level::value_, &Level::checkValue } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 5;
};

constexpr bool Level::isEq( const Level & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Only the lower bound can be violated.
class VOK_EXPORT Rate {
 public:
   constexpr Rate() noexcept = default;
   /// Throws Corvo::RangeException unless value is in 1 to 4294967295.
   constexpr explicit Rate( std::uint32_t value )
         : value_( value )
   {
      checkValue( value );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Rate( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Rate( Log * log )
   {
      vokDecode( *log );
   }

   /// one in so many
   constexpr std::uint32_t value() const noexcept { return value_; }
   /// Throws Corvo::RangeException unless v is in 1 to 4294967295. It keeps its value then.
   void valueIs( std::uint32_t v )
   {
      if ( v != value_ ) {
         checkValue( v );
         value_ = v;
      }
   }

   /// Whether all fields are equal.
   constexpr bool isEq( const Rate & other ) const;
   friend constexpr bool operator==( const Rate & a, const Rate & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Rate & v ) { return Vok::ValueType< Rate >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Rate";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkValue( std::uint32_t v )
   {
      if ( v < 1 ) {
         Corvo::RangeException::throwException(
               "Test::Rate::value < 1 or > 4294967295 not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< Rate, std::uint32_t >{ "value", &Rate::value_, &Rate::checkValue } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 1;
};

constexpr bool Rate::isEq( const Rate & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Built from a wider number.
class VOK_EXPORT TemplateId {
 public:
   constexpr TemplateId() noexcept = default;
   /// Throws Corvo::RangeException unless value is in 256 to 65535.
   constexpr explicit TemplateId( std::uint32_t value )
         : value_( static_cast< std::uint16_t >( value ) )
   {
      checkValue( value );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit TemplateId( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit TemplateId( Log * log )
   {
      vokDecode( *log );
   }

   /// the number
   constexpr std::uint16_t value() const noexcept { return value_; }

   /// Whether all fields are equal.
   constexpr bool isEq( const TemplateId & other ) const;
   friend constexpr bool operator==( const TemplateId & a, const TemplateId & b )
   {
      return a.isEq( b );
   }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const TemplateId & v )
   {
      return Vok::ValueType< TemplateId >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::TemplateId";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkValue( std::uint32_t v )
   {
      if ( v < 256 || v > 65535 ) {
         Corvo::RangeException::throwException(
               "Test::TemplateId::value < 256 or > 65535 not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< TemplateId, std::uint16_t, std::uint32_t >{
                  "value", &TemplateId::value_, &TemplateId::checkValue } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t value_ = 65535;
};

constexpr bool TemplateId::isEq( const TemplateId & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Built from a wider number, and set from one.
class VOK_EXPORT Weight {
 public:
   constexpr Weight() noexcept = default;
   /// Throws Corvo::RangeException unless value is in 1 to 40000.
   constexpr explicit Weight( std::uint32_t value )
         : value_( static_cast< std::uint16_t >( value ) )
   {
      checkValue( value );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Weight( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Weight( Log * log )
   {
      vokDecode( *log );
   }

   /// grams
   constexpr std::uint16_t value() const noexcept { return value_; }
   /// Throws Corvo::RangeException unless v is in 1 to 40000. It keeps its value then.
   void valueIs( std::uint32_t v )
   {
      if ( v != value_ ) {
         checkValue( v );
         value_ = static_cast< std::uint16_t >( v );
      }
   }

   /// Whether all fields are equal.
   constexpr bool isEq( const Weight & other ) const;
   friend constexpr bool operator==( const Weight & a, const Weight & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Weight & v )
   {
      return Vok::ValueType< Weight >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Weight";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkValue( std::uint32_t v )
   {
      if ( v < 1 || v > 40000 ) {
         Corvo::RangeException::throwException( "Test::Weight::value < 1 or > 40000 not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< Weight, std::uint16_t, std::uint32_t >{
                  "value", &Weight::value_, &Weight::checkValue } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t value_ = 1;
};

constexpr bool Weight::isEq( const Weight & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Checked by validate() only.
class VOK_EXPORT Timeout {
 public:
   constexpr Timeout() noexcept = default;
   /// From its value.
   constexpr explicit Timeout( std::uint32_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Timeout( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Timeout( Log * log )
   {
      vokDecode( *log );
   }

   /// milliseconds
   constexpr std::uint32_t value() const noexcept { return value_; }
   void valueIs( std::uint32_t v ) noexcept { value_ = v; }
   /// Throws Corvo::RangeException unless value is 0 or 100 to 1000.
   void validate() const;

   /// Whether all fields are equal.
   constexpr bool isEq( const Timeout & other ) const;
   friend constexpr bool operator==( const Timeout & a, const Timeout & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Timeout & v )
   {
      return Vok::ValueType< Timeout >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Timeout";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Timeout::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 300;
};

constexpr bool Timeout::isEq( const Timeout & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Never checked.
class VOK_EXPORT Size {
 public:
   constexpr Size() noexcept = default;
   /// From its value.
   constexpr explicit Size( std::uint16_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Size( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Size( Log * log )
   {
      vokDecode( *log );
   }

   /// bytes
   constexpr std::uint16_t value() const noexcept { return value_; }
   void valueIs( std::uint16_t v ) noexcept { value_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Size & other ) const;
   friend constexpr bool operator==( const Size & a, const Size & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Size & v ) { return Vok::ValueType< Size >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Size";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Size::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t value_ = 0;
};

constexpr bool Size::isEq( const Size & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Two fields, each with a message of its own.
class VOK_EXPORT Interval {
 public:
   constexpr Interval() noexcept = default;
   /// Throws Corvo::RangeException unless before is in least (1) to most (300). Throws
   /// Corvo::RangeException unless after is in least (1) to 299 (most - 1).
   constexpr Interval( std::uint16_t before, std::uint16_t after )
         : before_( before ),
           after_( after )
   {
      checkBefore( before );
      checkAfter( after );
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Interval( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Interval( Log * log )
   {
      vokDecode( *log );
   }

   /// seconds before
   constexpr std::uint16_t before() const noexcept { return before_; }
   /// Throws Corvo::RangeException unless v is in least (1) to most (300). It keeps its value
   /// then.
   void beforeIs( std::uint16_t v )
   {
      if ( v != before_ ) {
         checkBefore( v );
         before_ = v;
      }
   }
   /// seconds after
   constexpr std::uint16_t after() const noexcept { return after_; }
   /// Throws Corvo::RangeException unless v is in least (1) to 299 (most - 1). It keeps its
   /// value then.
   void afterIs( std::uint16_t v )
   {
      if ( v != after_ ) {
         checkAfter( v );
         after_ = v;
      }
   }
   /// lower bound
   static constexpr std::uint16_t least() noexcept { return 1; }
   /// upper bound
   static constexpr std::uint16_t most() noexcept { return 300; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Interval & other ) const;
   friend constexpr bool operator==( const Interval & a, const Interval & b )
   {
      return a.isEq( b );
   }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Interval & v )
   {
      return Vok::ValueType< Interval >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Interval";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr void checkBefore( std::uint16_t v )
   {
      if ( v < 1 || v > 300 ) {
         Corvo::RangeException::throwException(
               "Test::Interval::before < Test::Interval::least or > Test::Interval::most not a"
               "llowed" );
      }
   }
   static constexpr void checkAfter( std::uint16_t v )
   {
      if ( v < 1 || v > 299 ) {
         Corvo::RangeException::throwException(
               "Test::Interval::after < Test::Interval::least or > (Test::Interval::most - 1) "
               "not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< Interval, std::uint16_t >{
                  "before", &Interval::before_, &Interval::checkBefore },
            Vok::Field< Interval, std::uint16_t >{
                  "after", &Interval::after_, &Interval::checkAfter } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint16_t before_ = 30;
   std::uint16_t after_ = 30;
};

constexpr bool Interval::isEq( const Interval & other ) const
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

/// Bounds in mutators.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId agentsAttrId = 258;
   static constexpr Vok::AttrId patternAttrId = 259;
   static constexpr Vok::AttrId timeoutAttrId = 260;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// a number
   std::uint8_t agents() const noexcept;
   /// Throws Corvo::RangeException unless v is in 1 to 8 (Level::top - 2).
   void agentsIs( std::uint8_t v );

   /// the number inside a value
   const TemplateId & pattern() const noexcept;
   /// Throws Corvo::RangeException unless v is in 256 to 400.
   void patternIs( const TemplateId & v );

   /// the default is validated
   const Timeout & timeout() const noexcept;
   void timeoutIs( const Timeout & v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );
   static void checkAgents( std::uint8_t v );
   static void checkPattern( const TemplateId & v );

   std::uint8_t agents_ = 1;
   TemplateId pattern_ = TemplateId( 300 );
   Timeout timeout_;
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline std::uint8_t Root::agents() const noexcept { return agents_; }
inline void Root::agentsIs( std::uint8_t v )
{
   Vok::Attribute::plainIs( *this, agentsAttrId, agents_, v, &Root::checkAgents );
}

inline const TemplateId & Root::pattern() const noexcept { return pattern_; }
inline void Root::patternIs( const TemplateId & v )
{
   Vok::Attribute::plainIs( *this, patternAttrId, pattern_, v, &Root::checkPattern );
}

inline const Timeout & Root::timeout() const noexcept { return timeout_; }
inline void Root::timeoutIs( const Timeout & v )
{
   Vok::Attribute::plainIs( *this, timeoutAttrId, timeout_, v );
}

} // namespace Test

template<> struct std::hash< Test::Level > : Vok::ValueHash< Test::Level > {
};
template<> struct std::hash< Test::Rate > : Vok::ValueHash< Test::Rate > {
};
template<> struct std::hash< Test::TemplateId > : Vok::ValueHash< Test::TemplateId > {
};
template<> struct std::hash< Test::Weight > : Vok::ValueHash< Test::Weight > {
};
template<> struct std::hash< Test::Timeout > : Vok::ValueHash< Test::Timeout > {
};
template<> struct std::hash< Test::Size > : Vok::ValueHash< Test::Size > {
};
template<> struct std::hash< Test::Interval > : Vok::ValueHash< Test::Interval > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
