// Made by vokgen from Sample.vok. Do not edit.
//
// An entity type that derives from another.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

class Config;
class MirrorConfig;

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

/// The base.
class VOK_EXPORT Config : public Vok::Entity {
 public:
   using FlowOut = Vok::FlowOut< Config >;

   // Keys and nodes of the collections: for the framework.
   using HN_Tags = Vok::SetNode< std::uint32_t, 0x0aa97fea >;

   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId agentsAttrId = 258;
   static constexpr Vok::AttrId tagsAttrId = 259;

   /// A new Config with this name, without a parent.
   static Corvo::Ptr< Config > ConfigIs( const Corvo::String & name );

   /// how many
   std::uint8_t agents() const noexcept;
   /// Throws Corvo::RangeException unless v is in 1 to 8.
   void agentsIs( std::uint8_t v );

   /// marks
   Vok::HashView< HN_Tags > tags() const noexcept;
   bool tags( std::uint32_t key ) const;
   void tagsIs( std::uint32_t key );
   void tagsDel( std::uint32_t key );
   void tagsDelAll();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit Config( const Corvo::String & name );
   ~Config() override;
   static void checkAgents( std::uint8_t v );

 private:
   friend struct Vok::Detail::EntityAccess;
   void vokReinstantiate( const Corvo::String & name );

   std::uint8_t agents_ = 1;
   Vok::HashMap2018< HN_Tags, std::uint32_t, std::uint32_t > tags_;
};

/// The same as Config::ConfigIs().
inline Corvo::Ptr< Config > configFactory( const Corvo::String & name )
{
   return Config::ConfigIs( name );
}

/// Checks when it is made.
class VOK_EXPORT MirrorConfig : public Config {
 public:
   // Ids of the attributes, as changes name them.
   static constexpr Vok::AttrId extraAttrId = 260;
   static constexpr Vok::AttrId fillAttrId = 261;

   /// A new MirrorConfig with this name, without a parent.
   static Corvo::Ptr< MirrorConfig > MirrorConfigIs( const Corvo::String & name );

   /// its ids go on
   bool extra() const noexcept;
   void extraIs( bool v );

   /// written by hand
   void fill();

   const Vok::TypeData & typeData() const noexcept override;
   static const Vok::TypeData & vokType() noexcept; ///< For the framework.
   struct VOK_HIDDEN VokTable;

 protected:
   explicit MirrorConfig( const Corvo::String & name );
   ~MirrorConfig() override;

 private:
   friend struct Vok::Detail::EntityAccess;

   bool extra_ = false;
};

/// The same as MirrorConfig::MirrorConfigIs().
inline Corvo::Ptr< MirrorConfig > mirrorConfigFactory( const Corvo::String & name )
{
   return MirrorConfig::MirrorConfigIs( name );
}

// ---- Inline members -----------------------------------------------------------------------------

inline std::uint8_t Config::agents() const noexcept { return agents_; }
inline void Config::agentsIs( std::uint8_t v )
{
   Vok::Attribute::plainIs( *this, agentsAttrId, agents_, v, &Config::checkAgents );
}

inline Vok::HashView< Config::HN_Tags > Config::tags() const noexcept
{
   return Vok::HashView< HN_Tags >( tags_ );
}
inline bool Config::tags( std::uint32_t key ) const
{
   return Vok::Collection::contains( tags_, key );
}

inline bool MirrorConfig::extra() const noexcept { return extra_; }
inline void MirrorConfig::extraIs( bool v )
{
   Vok::Attribute::plainIs( *this, extraAttrId, extra_, v );
}

} // namespace Test

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
