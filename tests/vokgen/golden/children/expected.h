// Made by vokgen from Sample.vok. Do not edit.
//
// Collections of children.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Tree;
class Group;
class Slot;
class Root;

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

/// A recursive type.
class VOK_EXPORT Tree : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Tree >;

   // Keys and nodes of the collections: for the framework.
   struct KidsKeyFunktor {
      const Corvo::String & operator()( const Tree & v ) const noexcept;
   };
   using HN_Kids = Vok::ChildNode< Tree, KidsKeyFunktor, 0x7f71556c >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId kidsAttrId = 258;

   /// A new Tree with this name, without a parent.
   static Corvo::Ptr< Tree > TreeIs( const Corvo::String & name );

   /// below it. Key: name() of the child.
   Vok::HashView< HN_Kids > kids() const noexcept;
   Corvo::Ptr< Tree > kids( std::string_view key ) const;
   Corvo::Ptr< Tree > kidsIs( const Corvo::String & name );
   Corvo::Ptr< Tree > kidsDel( std::string_view key );
   void kidsDelAll();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Tree( const Corvo::String & name );
   ~Tree() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Vok::HashMap2018< HN_Kids, Corvo::String, Corvo::Ptr< Tree > > kids_;
};

/// The same as Tree::TreeIs().
inline Corvo::Ptr< Tree > treeFactory( const Corvo::String & name )
{
   return Tree::TreeIs( name );
}

/// A child with further arguments.
class VOK_EXPORT Group : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Group >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId seqnoAttrId = 258;
   static constexpr Vok::AttrId weightAttrId = 259;

   /// A new Group with this name, seqno and weight, without a parent.
   static Corvo::Ptr< Group > GroupIs(
         const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight );

   /// its number
   std::uint32_t seqno() const noexcept;

   /// can be changed
   std::uint16_t weight() const noexcept;
   void weightIs( std::uint16_t v );

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   Group( const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight );
   ~Group() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight );

   std::uint32_t seqno_;
   std::uint16_t weight_;
};

/// The same as Group::GroupIs().
inline Corvo::Ptr< Group > groupFactory(
      const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight )
{
   return Group::GroupIs( name, seqno, weight );
}

/// Known by a value.
class VOK_EXPORT Slot : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Slot >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId labelAttrId = 258;

   /// A new Slot with this label, without a parent.
   static Corvo::Ptr< Slot > SlotIs( const Label & label );

   /// Known by a value.
   const Label & label() const noexcept;

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Slot( const Label & label );
   ~Slot() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Label & label );

   Label label_;
};

/// The same as Slot::SlotIs().
inline Corvo::Ptr< Slot > slotFactory( const Label & label )
{
   return Slot::SlotIs( label );
}

/// Every kind of key.
class VOK_EXPORT Root : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Root >;

   // Keys and nodes of the collections: for the framework.
   struct GroupsKeyFunktor {
      std::uint32_t operator()( const Group & v ) const noexcept;
   };
   using VokGroups = Vok::ChildNode< Group, GroupsKeyFunktor, 0 >;
   struct NamedKeyFunktor {
      const Corvo::String & operator()( const Group & v ) const noexcept;
   };
   using HN_Named = Vok::ChildNode< Group, NamedKeyFunktor, 0xee15c826 >;
   struct SlotsKeyFunktor {
      const Label & operator()( const Slot & v ) const noexcept;
   };
   using HN_Slots = Vok::ChildNode< Slot, SlotsKeyFunktor, 0x572f3ca6 >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId groupsAttrId = 258;
   static constexpr Vok::AttrId namedAttrId = 259;
   static constexpr Vok::AttrId slotsAttrId = 260;

   /// A new Root with this name, without a parent.
   static Corvo::Ptr< Root > RootIs( const Corvo::String & name );

   /// in order of their number. Key: seqno() of the child.
   Vok::OrderedView< VokGroups > groups() const noexcept;
   Corvo::Ptr< Group > groups( std::uint32_t key ) const;
   /// Where the child exists, another name throws Corvo::ReinstantiationException, another
   /// weight is set.
   Corvo::Ptr< Group > groupsIs(
         const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight );
   Corvo::Ptr< Group > groupsDel( std::uint32_t key );
   void groupsDelAll();

   /// by name. Key: name() of the child.
   Vok::HashView< HN_Named > named() const noexcept;
   Corvo::Ptr< Group > named( std::string_view key ) const;
   /// Where the child exists, another seqno throws Corvo::ReinstantiationException, another
   /// weight is set.
   Corvo::Ptr< Group > namedIs(
         const Corvo::String & name, std::uint32_t seqno, std::uint16_t weight );
   Corvo::Ptr< Group > namedDel( std::string_view key );
   void namedDelAll();

   /// by a value. Key: label() of the child.
   Vok::HashView< HN_Slots > slots() const noexcept;
   Corvo::Ptr< Slot > slots( const Label & key ) const;
   Corvo::Ptr< Slot > slotsIs( const Label & label );
   Corvo::Ptr< Slot > slotsDel( const Label & key );
   void slotsDelAll();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Root( const Corvo::String & name );
   ~Root() override;

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   Vok::OrderedMap< VokGroups, std::uint32_t, Corvo::Ptr< Group > > groups_;
   Vok::HashMap2018< HN_Named, Corvo::String, Corvo::Ptr< Group > > named_;
   Vok::HashMap2018< HN_Slots, Label, Corvo::Ptr< Slot > > slots_;
};

/// The same as Root::RootIs().
inline Corvo::Ptr< Root > rootFactory( const Corvo::String & name )
{
   return Root::RootIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline const Corvo::String & Tree::KidsKeyFunktor::operator()( const Tree & v ) const noexcept
{
   return v.name();
}
inline Vok::HashView< Tree::HN_Kids > Tree::kids() const noexcept
{
   return Vok::HashView< HN_Kids >( kids_ );
}
inline Corvo::Ptr< Tree > Tree::kids( std::string_view key ) const
{
   return Vok::Collection::pointer( kids_, key );
}

inline std::uint32_t Group::seqno() const noexcept { return seqno_; }

inline std::uint16_t Group::weight() const noexcept { return weight_; }
inline void Group::weightIs( std::uint16_t v )
{
   Vok::Attribute::plainIs( *this, weightAttrId, weight_, v );
}

inline const Label & Slot::label() const noexcept { return label_; }

inline std::uint32_t Root::GroupsKeyFunktor::operator()( const Group & v ) const noexcept
{
   return v.seqno();
}
inline Vok::OrderedView< Root::VokGroups > Root::groups() const noexcept
{
   return Vok::OrderedView< VokGroups >( groups_ );
}
inline Corvo::Ptr< Group > Root::groups( std::uint32_t key ) const
{
   return Vok::Collection::pointer( groups_, key );
}

inline const Corvo::String & Root::NamedKeyFunktor::operator()( const Group & v ) const noexcept
{
   return v.name();
}
inline Vok::HashView< Root::HN_Named > Root::named() const noexcept
{
   return Vok::HashView< HN_Named >( named_ );
}
inline Corvo::Ptr< Group > Root::named( std::string_view key ) const
{
   return Vok::Collection::pointer( named_, key );
}

inline const Label & Root::SlotsKeyFunktor::operator()( const Slot & v ) const noexcept
{
   return v.label();
}
inline Vok::HashView< Root::HN_Slots > Root::slots() const noexcept
{
   return Vok::HashView< HN_Slots >( slots_ );
}
inline Corvo::Ptr< Slot > Root::slots( const Label & key ) const
{
   return Vok::Collection::pointer( slots_, key );
}

} // namespace Test

template<> struct std::hash< Test::Label > : Vok::ValueHash< Test::Label > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
