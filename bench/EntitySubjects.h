// Entities, and what stands beside them, with one interface each: by themselves, as children under
// their names, and as trees.
#pragma once

#include "bench/BenchModel.h"
#include "bench/EntityPeers.h"
#include "bench/Messages.pb.h"

#include <google/protobuf/arena.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Bench {

// ---- By themselves ----------------------------------------------------------------------------

/// How single objects are made; what a `Pointer` holds ends with it.
struct VokAlone {
   using Pointer = Corvo::Ptr< Item >;
   static constexpr const char * name = "Vok";
   static Pointer make( const std::string & item ) { return itemFactory( item ); }
};
struct SharedAlone {
   using Pointer = std::shared_ptr< PlainItem >;
   static constexpr const char * name = "make-shared";
   static Pointer make( const std::string & item ) { return std::make_shared< PlainItem >( item ); }
};
struct NewAlone {
   using Pointer = std::unique_ptr< PlainItem >;
   static constexpr const char * name = "new";
   static Pointer make( const std::string & item ) { return std::make_unique< PlainItem >( item ); }
};
struct MessageAlone {
   using Pointer = std::unique_ptr< BenchMessages::Item >;
   static constexpr const char * name = "protobuf";
   static Pointer make( const std::string & item )
   {
      auto message = std::make_unique< BenchMessages::Item >();
      message->set_name( item );
      return message;
   }
};

// ---- Children ---------------------------------------------------------------------------------

class VokChildren {
 public:
   void make( const std::string & child ) { folder_->itemIs( child ); }
   void destroy( const std::string & child ) { folder_->itemDel( child ); }
   std::size_t size() const { return folder_->item().size(); }

 private:
   Corvo::Ptr< Folder > folder_ = folderFactory( "folder" );
};

/// `Map` is from names to shared pointers.
template< class Map > class SharedChildren {
 public:
   void make( const std::string & child )
   {
      const auto [ at, isNew ] = children_.try_emplace( child );
      if ( isNew ) {
         at->second = std::make_shared< PlainItem >( child, this );
      }
   }
   void destroy( const std::string & child ) { children_.erase( child ); }
   std::size_t size() const { return children_.size(); }

 private:
   Map children_;
};

// ---- Trees ------------------------------------------------------------------------------------

/// The names in a tree: of `folders` folders in each of `folders` folders, and of items in those.
struct TreeNames {
   std::vector< std::string > folders;
   std::vector< std::string > items;

   TreeNames( std::size_t folderCount, std::size_t itemCount )
   {
      for ( std::size_t i = 0; i != folderCount; ++i ) {
         folders.push_back( "Linecard" + std::to_string( i ) );
      }
      for ( std::size_t i = 0; i != itemCount; ++i ) {
         items.push_back( "Ethernet" + std::to_string( i ) );
      }
   }
};

class VokTree {
 public:
   explicit VokTree( const TreeNames & names )
   {
      for ( const std::string & outer : names.folders ) {
         const auto above = root_->folderIs( outer );
         for ( const std::string & inner : names.folders ) {
            const auto folder = above->folderIs( inner );
            for ( const std::string & item : names.items ) {
               folder->itemIs( item );
            }
         }
      }
   }
   std::size_t size() const { return root_->folder().size(); }

 private:
   Corvo::Ptr< Folder > root_ = folderFactory( "root" );
};

/// `Map` is what holds children by name.
template< template< class > class Map > class SharedTree {
   using Node = PlainFolder< Map >;

 public:
   explicit SharedTree( const TreeNames & names )
   {
      for ( const std::string & outer : names.folders ) {
         Node & above = folderIn( *root_, outer );
         for ( const std::string & inner : names.folders ) {
            Node & folder = folderIn( above, inner );
            for ( const std::string & item : names.items ) {
               const auto [ at, isNew ] = folder.items.try_emplace( item );
               if ( isNew ) {
                  at->second = std::make_shared< PlainItem >( item, &folder );
               }
            }
         }
      }
   }
   std::size_t size() const { return root_->folders.size(); }

 private:
   static Node & folderIn( Node & above, const std::string & name )
   {
      const auto [ at, isNew ] = above.folders.try_emplace( name );
      if ( isNew ) {
         at->second = std::make_shared< Node >( name, &above );
      }
      return *at->second;
   }

   std::shared_ptr< Node > root_ = std::make_shared< Node >( "root" );
};

/// Messages in an arena, which ends them together.
class ArenaTree {
 public:
   explicit ArenaTree( const TreeNames & names )
   {
      for ( const std::string & outer : names.folders ) {
         Folder & above = folderIn( *root_, outer );
         for ( const std::string & inner : names.folders ) {
            Folder & folder = folderIn( above, inner );
            for ( const std::string & item : names.items ) {
               ( *folder.mutable_item() )[ item ].set_name( item );
            }
         }
      }
   }
   std::size_t size() const { return root_->folder().size(); }

 private:
   using Folder = BenchMessages::Folder;

   static Folder & folderIn( Folder & above, const std::string & name )
   {
      Folder & folder = ( *above.mutable_folder() )[ name ];
      folder.set_name( name );
      return folder;
   }

   google::protobuf::Arena arena_;
   Folder * root_ = google::protobuf::Arena::CreateMessage< Folder >( &arena_ );
};

} // namespace Bench
