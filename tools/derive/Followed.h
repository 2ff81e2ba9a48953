// A mount that a program reads whether or not it is there.
#pragma once

#include "store/Client.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Derive {

/// What another process mounts at a path, of which it matters when it is not there: a program that
/// has just begun acts upon nothing before it knows. `Tree` is the type that is expected there, or
/// one that is derived from it.
class FollowedMount : private Vok::Store::MountListener {
 public:
   FollowedMount( const FollowedMount & ) = delete;
   FollowedMount & operator=( const FollowedMount & ) = delete;

   /// Whether it is known what is there: a tree, or none. Asks again where the connection was lost
   /// before the tree came: it may have gone with the store.
   bool known();

   /// Whether there is a tree, and a process that writes it.
   bool live() const noexcept { return root_ && live_; }

   /// Why what is there cannot be read; empty where it can.
   const std::string & failure() const noexcept { return failure_; }

   const std::string & path() const noexcept { return path_; }

 protected:
   FollowedMount( Vok::Store::Client & client, const std::string & path );
   ~FollowedMount() override;

   const Corvo::Ptr< Vok::Entity > & root() const noexcept { return root_; }

 private:
   virtual bool fits( const Vok::Entity & root ) const = 0;

   void mounted( const std::string & path, const Corvo::Ptr< Vok::Entity > & root ) override;
   void stateIs( const std::string & path, const Vok::Store::MountState & state ) override;
   void unmounted( const std::string & path ) override;
   void failed( const std::string & path, const std::string & text ) override;

   void ask();

   Vok::Store::Client & client_;
   std::string path_;
   Corvo::Ptr< Vok::Entity > root_;
   bool absent_ = false;
   bool asking_ = false;
   std::uint64_t asked_ = 0; // the connection over which the last answer came
   bool live_ = false;
   std::string failure_;
   std::shared_ptr< bool > alive_ = std::make_shared< bool >( true ); // for an answer that is late
   std::unique_ptr< Vok::Store::Reading > reading_;
};

template< class Tree > class Followed final : public FollowedMount {
 public:
   Followed( Vok::Store::Client & client, const std::string & path )
         : FollowedMount( client, path )
   {
   }

   /// The tree, or null. Another one stands here once the mount was taken away and made anew.
   Corvo::Ptr< Tree > tree() const
   {
      return Corvo::Ptr< Tree >( dynamic_cast< Tree * >( root().get() ) );
   }

 private:
   bool fits( const Vok::Entity & root ) const override
   {
      return dynamic_cast< const Tree * >( &root ) != nullptr;
   }
};

} // namespace Derive
