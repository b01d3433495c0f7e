#pragma once

// How the password is proven to the server; a later one guards it better.
enum class Proof {
    None,  // not known, or not yet
    Plain, // the password itself
    Digest,
    ScramSha1,
    ScramSha256,
};

// How well a sign-in is guarded against others on the way.
struct Safety {
    bool encrypted = false;
    // The certificate verified by name; one that the person accepted did not.
    bool verified = false;
    Proof proof = Proof::None;

    // The certificate is left out: whoever judges it asks about it.
    bool isLessThan(const Safety& before) const
    {
        return (before.encrypted && !encrypted) || (proof != Proof::None && proof < before.proof);
    }
    bool operator==(const Safety&) const = default;
};
