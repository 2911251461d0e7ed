/// Numbers that are the same on every machine for the same seed (xorshift).
sealed class RandomNumbers {
  uint mState;

  public RandomNumbers(int seed) {
    mState = unchecked((uint)seed * 2654435761u) | 1u;
    for (int i = 0; i < 8; ++i) next();
  }

  /// 0 to end - 1.
  public int below(int end) {
    return (int)(next() % (uint)end);
  }

  /// True once in `in` times.
  public bool once(int oneIn) {
    return below(oneIn) == 0;
  }

  public string oneOf(params string[] texts) {
    return texts[below(texts.Length)];
  }

  uint next() {
    mState ^= mState << 13;
    mState ^= mState >> 17;
    return mState ^= mState << 5;
  }
}
