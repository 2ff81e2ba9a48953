// A mount is there, or the store's list has none of its path.
#include "tools/derive/Followed.h"

#include <vector>

namespace Derive {

FollowedMount::FollowedMount( Vok::Store::Client & client, const std::string & path )
      : client_( client ),
        path_( path ),
        reading_( client.read( path, *this ) )
{
   ask();
}

// The list is asked for behind the mount: where the list has it, its tree comes.
void FollowedMount::ask()
{
   asking_ = true;
   client_.list( path_, false,
         [ this, alive = std::weak_ptr( alive_ ) ](
               const std::vector< Vok::Store::MountEntry > & mounts ) {
            if ( alive.lock() ) {
               asking_ = false;
               asked_ = client_.connections();
               absent_ = absent_ || mounts.empty();
            }
         } );
}

bool FollowedMount::known()
{
   if ( !root_ && !absent_ && !asking_ && asked_ != client_.connections() ) {
      ask();
   }
   return root_ || absent_;
}

FollowedMount::~FollowedMount() = default;

void FollowedMount::mounted( const std::string & path, const Corvo::Ptr< Vok::Entity > & root )
{
   if ( fits( *root ) ) {
      root_ = root;
      failure_.clear();
   } else {
      failed( path, "its type is " + std::string( root->typeData().name() ) );
   }
}

void FollowedMount::stateIs( const std::string & /*path*/, const Vok::Store::MountState & state )
{
   live_ = !state.stale;
}

void FollowedMount::unmounted( const std::string & /*path*/ )
{
   root_ = nullptr;
   absent_ = true;
}

void FollowedMount::failed( const std::string & /*path*/, const std::string & text )
{
   root_ = nullptr;
   absent_ = true;
   failure_ = text;
}

} // namespace Derive
